#include "presets/PresetFolder.h"

#include "support/PresetFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

TEST(PresetFolder, TakesItsPlaceFromItsName)
{
    struct Row {
        const char* folder;
        int priority;
        const char* name;
    };
    const TemporaryFolder folder;
    for (const auto& [name, priority, shown] :
         {Row{"_2 Bass", 2, "Bass"}, Row{"_Allround", 0, "Allround"}, Row{"_9x", 9, "x"},
          Row{"_10 Pads", 10, "Pads"}, Row{"Dub", 10000, "Dub"}, Row{"_07\t Lead", 7, "Lead"},
          Row{"_", 0, ""}, Row{"_ x", 0, "x"}, Row{"_5", 5, ""}, Row{"9x", 10000, "9x"},
          Row{"_-3 y", 0, "-3 y"}, Row{"_99999999999 z", 0, "z"}, Row{"a_1 b", 10000, "a_1 b"},
          Row{"__1", 0, "_1"}}) {
        const PresetFolder read((folder / name).string(), ".mvp", 1000);
        EXPECT_EQ(read.sortPriority(), priority) << name;
        EXPECT_EQ(read.name(), shown);
        EXPECT_EQ(read.path(), (folder / name).string() + "/");
    }
}

TEST(PresetFolder, SortsFoldersByNumberAndAllElseByName)
{
    const TemporaryFolder folder;
    for (const char* file : {"zeta/x.mvp", "Alpha/x.mvp", "beta/x.mvp", "_10 Pads/x.mvp", "_9x/x.mvp",
                             "_Top/x.mvp", "_9 Aa/x.mvp", "b.mvp", "A.mvp", "C.mvp", "a2.mvp", "[.mvp"})
        putPreset(folder, file);
    const PresetFolder read((folder / "").string(), ".mvp", 5000);
    std::vector<std::string> names;
    for (const auto& subfolder : read.subfolders())
        names.push_back(subfolder->name());
    EXPECT_EQ(names, (std::vector<std::string>{"Top", "Aa", "x", "Pads", "Alpha", "beta", "zeta"}));
    names.clear();
    for (const auto& preset : read.presets())
        names.push_back(preset->name);
    EXPECT_EQ(names, (std::vector<std::string>{"[", "A", "a2", "b", "C"}));  // "[" lies between "Z" and "a"
}

TEST(PresetFolder, ListsWhatLiesDeeperFirst)
{
    const TemporaryFolder folder;
    for (const char* file : {"a.mvp", "s/b.mvp", "s/t/c.mvp", "_1 u/d.mvp"})
        putPreset(folder, file);
    EXPECT_EQ(namesOf(PresetFolder((folder / "").string(), ".mvp", 5000)), "d c b a");
}

TEST(PresetFolder, IsEmptyWithoutPathTimeOrFolder)
{
    const TemporaryFolder folder;
    putPreset(folder, "a.mvp");
    const std::string path = (folder / "").string();
    EXPECT_TRUE(PresetFolder("", ".mvp", 1000).isEmpty());
    EXPECT_TRUE(PresetFolder("", ".mvp", 1000).path().empty());
    EXPECT_TRUE(PresetFolder(path, ".mvp", 0).isEmpty());
    EXPECT_TRUE(PresetFolder(path, ".mvp", -5).isEmpty());
    EXPECT_TRUE(PresetFolder((folder / "none").string(), ".mvp", 1000).isEmpty());
    EXPECT_TRUE(PresetFolder(path, ".xlfo", 1000).isEmpty());
    PresetFolder again(path, ".mvp", 1000);
    EXPECT_FALSE(again.isEmpty());
    again.scan(again.path(), 1000);
    EXPECT_EQ(again.presets().size(), 1u);
    again.scan((folder / "none").string(), 1000);
    EXPECT_TRUE(again.isEmpty());
}

TEST(PresetFolder, LeavesDeepFoldersEmptyWhenTimeIsShort)
{
    const TemporaryFolder folder;
    // Far more than a millisecond's work, in folders side by side.
    for (int i = 0; i < 300; ++i) {
        for (int j = 0; j < 30; ++j)
            putPreset(folder, joined("f", i, "/p", j, ".mvp"));
    }
    putPreset(folder, "own.mvp");
    const PresetFolder read((folder / "").string(), ".mvp", 1);
    EXPECT_EQ(read.subfolders().size(), 300u);
    EXPECT_EQ(read.presets().size(), 1u);
    const auto& subfolders = read.subfolders();
    EXPECT_TRUE(
        std::any_of(subfolders.begin(), subfolders.end(), [](const auto& f) { return f->isEmpty(); }));
}

TEST(PresetFolder, ReadsTwentyThousandPresetsInTime)
{
    const TemporaryFolder folder;
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < 20; ++j) {
            for (int k = 0; k < 50; ++k)
                putPreset(folder, joined(i, "/", j, "/", k, ".mvp"));
        }
    }
    const auto start = std::chrono::steady_clock::now();
    const PresetFolder read((folder / "").string(), ".mvp", PresetFolder::usualBudgetMs);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    std::vector<PresetInfo*> list;
    read.appendPresets(list);
    EXPECT_EQ(list.size(), 20000u);
    EXPECT_LT(took.count(), 1250.0);  // half of what it may take
    RecordProperty("milliseconds", std::to_string(took.count()));
}
