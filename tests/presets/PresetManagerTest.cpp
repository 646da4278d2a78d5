#include "presets/PresetManager.h"

#include "support/PresetFiles.h"

#include <gtest/gtest.h>

namespace {

using Direction = PresetManager::Direction;
using Scope = PresetManager::Scope;

std::string pathOf(const TemporaryFolder& folder, const char* name) { return (folder / name).string(); }

/// A root of three presets, and a further tree of two.
struct TwoTrees {
    TwoTrees()
    {
        for (const char* file : {"b.mvp", "c.mvp", "In/a.mvp"})
            putPreset(root, file);
        for (const char* file : {"d.mvp", "b.mvp"})
            putPreset(extra, file);
        manager.addExtraFolder(pathOf(extra, ""), "V1 Preset Folder");
        manager.rescan(pathOf(root, ""));
    }

    TemporaryFolder root;
    TemporaryFolder extra;
    PresetManager manager{".mvp"};
};

}  // namespace

TEST(PresetManager, CountsProgramsInBanksOf128)
{
    const TemporaryFolder folder;
    for (int i = 0; i < 129; ++i)
        putPreset(folder, joined("p", 1000 + i, ".mvp"));
    PresetManager manager(".mvp");
    manager.rescan(pathOf(folder, ""));
    std::vector<PresetInfo*> list;
    manager.listPresets(list);
    ASSERT_EQ(list.size(), 129u);
    struct Row {
        std::size_t place;
        int bank;
        int program;
        const char* label;
    };
    for (const auto& [place, bank, program, label] :
         {Row{0, 0, 0, "(0/0) p1000"}, Row{127, 0, 127, "(0/127) p1127"}, Row{128, 1, 0, "(1/0) p1128"}}) {
        EXPECT_EQ(list[place]->bank, bank);
        EXPECT_EQ(list[place]->program, program);
        EXPECT_EQ(list[place]->label, label);
    }
}

TEST(PresetManager, PutsFurtherTreesBehindItsOwn)
{
    TwoTrees trees;
    std::vector<PresetInfo*> list;
    trees.manager.listPresets(list);
    EXPECT_EQ(namesOf(list), "a b c b d");
    EXPECT_EQ(trees.manager.mainPresetCount(), 3u);
    EXPECT_EQ(list[4]->label, "(0/4) d");
    putPreset(trees.root, "0.mvp");
    putPreset(trees.extra, "0.mvp");
    trees.manager.rescanAll();
    trees.manager.listPresets(list);
    EXPECT_EQ(namesOf(list), "a 0 b c 0 b d");
    EXPECT_EQ(list[6]->label, "(0/6) d");
    EXPECT_EQ(trees.manager.extraFolders()[0]->name(), "V1 Preset Folder");
}

TEST(PresetManager, FindsTheFirstOfExactlyThatName)
{
    TwoTrees trees;
    EXPECT_EQ(trees.manager.findByName("b", Scope::Everything)->path, pathOf(trees.root, "b.mvp"));
    EXPECT_EQ(trees.manager.findByName("d", Scope::Everything)->path, pathOf(trees.extra, "d.mvp"));
    EXPECT_EQ(trees.manager.findByName("d", Scope::RootTree), nullptr);
    EXPECT_EQ(trees.manager.findByName("B", Scope::Everything), nullptr);
    EXPECT_EQ(trees.manager.findByName("", Scope::Everything), nullptr);
}

TEST(PresetManager, StepsAroundWithinTheRootTree)
{
    TwoTrees trees;
    std::vector<PresetInfo*> list;  // a b c, b d
    trees.manager.listPresets(list);
    struct Row {
        std::size_t from;
        std::size_t previous;
        std::size_t next;
    };
    for (const auto& [from, previous, next] :
         {Row{0, 2, 1}, Row{1, 0, 2}, Row{2, 1, 0}, Row{3, 2, 4}, Row{4, 3, 0}}) {
        const std::string path = list[from]->path;
        EXPECT_EQ(trees.manager.neighbour(path, Direction::Previous), list[previous]) << from;
        EXPECT_EQ(trees.manager.neighbour(path, Direction::Next), list[next]) << from;
        EXPECT_EQ(trees.manager.neighbour(path, Direction::Same), list[from]);
    }
    EXPECT_EQ(trees.manager.neighbour(pathOf(trees.root, "none.mvp"), Direction::Next), nullptr);
    EXPECT_EQ(trees.manager.neighbour("", Direction::Same), nullptr);
}

TEST(PresetManager, AnOnlyPresetIsItsOwnNeighbour)
{
    const TemporaryFolder root;
    const TemporaryFolder extra;
    const std::string path = putPreset(root, "only.mvp");
    putPreset(extra, "other.mvp");
    PresetManager manager(".mvp");
    manager.rescan(pathOf(root, ""));
    manager.addExtraFolder(pathOf(extra, ""), "More");
    EXPECT_EQ(manager.neighbour(path, Direction::Next)->path, path);
    EXPECT_EQ(manager.neighbour(path, Direction::Previous)->path, path);
}

TEST(PresetManager, TakesTheWantedRootWhereItIsAFolder)
{
    const TemporaryFolder wanted;
    const TemporaryFolder usual;
    putPreset(wanted, "w.mvp");
    putPreset(usual, "u.mvp");
    PresetManager manager(".mvp");
    for (const auto& [root, names] : {std::pair(pathOf(wanted, ""), "w"),
                                      {pathOf(wanted, "missing"), "u"},
                                      {pathOf(wanted, "w.mvp"), "u"},
                                      {"", "u"}}) {
        manager.chooseRoot(root, pathOf(usual, ""));
        EXPECT_EQ(namesOf(manager), names) << root;
    }
    manager.chooseRoot(pathOf(wanted, ""), pathOf(usual, ""));
    PresetInfo* before = manager.findByName("w", Scope::RootTree);
    std::string withoutSeparator = pathOf(wanted, "");
    withoutSeparator.pop_back();
    manager.chooseRoot(withoutSeparator, pathOf(usual, ""));
    EXPECT_EQ(manager.findByName("w", Scope::RootTree), before);  // not read again
}
