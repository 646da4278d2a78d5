#include "presets/PresetCache.h"

#include "presets/PresetManager.h"
#include "support/PresetFiles.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

std::string number(std::uint64_t value, int bytes = 4)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

std::string text(const std::string& bytes) { return number(bytes.size()).append(bytes); }

std::string preset(const char* author, const char* description, const char* tags)
{
    return joined("[Preset]\nSignature=MStd\nVersion=5\nAuthor=", author, "\nDescription=", description,
                  "\nTags=", tags, "\n");
}

/// A manager with a cache on it, and the folder of its presets.
struct Cached {
    explicit Cached(const TemporaryFolder& presets) : root((presets / "").string())
    {
        manager.setCache(&cache);
        scan();
    }
    void scan()
    {
        manager.rescan(root);
        cache.waitForWorker();
    }
    PresetInfo& operator[](const char* name)
    {
        return *manager.findByName(name, PresetManager::Scope::Everything);
    }
    std::string found(const char* words)
    {
        std::string names;
        for (const PresetInfo& one : cache.find(words))
            names.append(names.empty() ? "" : " ").append(one.name);
        return names;
    }

    std::string root;
    TemporaryFolder data;
    PresetCache cache{(data / "PresetCache.dat").string()};
    PresetManager manager{".mvp"};
};

}  // namespace

TEST(PresetCache, HashesByTheUsualTestVectors)
{
    EXPECT_EQ(PresetCache::hashOf(""), 0xCBF29CE484222325u);
    EXPECT_EQ(PresetCache::hashOf("a"), 0xAF63DC4C8601EC8Cu);
    EXPECT_EQ(PresetCache::hashOf("foobar"), 0x85944171F73967E8u);
}

TEST(PresetCache, FindsPresetsByTheBeginningsOfWords)
{
    const TemporaryFolder folder;
    putPreset(folder, "Warm Bass.mvp", preset("Ada", "a long echo", "Dub,Tape"));
    putPreset(folder, "_2 Bass/Lead.mvp", preset("Bo", "warm", "Dub"));
    putPreset(folder, "Plain.mvp", preset("Bassist", "", ""));
    Cached cached(folder);
    for (const auto& [words, names] : {std::pair("bass warm", "Warm Bass Lead"),
                                       {"WAR", "Warm Bass Lead"},
                                       {"dub tape", "Warm Bass"},
                                       {"bo", "Lead"},
                                       {"ada echo", "Warm Bass"},
                                       {"bassi", "Plain"},
                                       {"cho", ""},
                                       {"", ""},
                                       {" - ", ""},
                                       {"dub plain", ""}})
        EXPECT_EQ(cached.found(words), names) << words;
}

TEST(PresetCache, LooksOnlyIntoNewAndChangedFiles)
{
    const TemporaryFolder folder;
    const std::string a = putPreset(folder, "a.mvp", preset("Ada", "", ""));
    const std::string b = putPreset(folder, "b.mvp", preset("Bo", "", ""));
    Cached cached(folder);
    EXPECT_EQ(cached.cache.infoOf(a).author, "Ada");
    EXPECT_EQ(cached.cache.infoOf(b).label, "(0/1) b");

    struct stat status {};
    ASSERT_EQ(stat(a.c_str(), &status), 0);
    putPreset(folder, "a.mvp", preset("Unseen", "", ""));
    const timespec same[] = {status.st_atim, status.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, a.c_str(), same, 0), 0);
    putPreset(folder, "b.mvp", preset("Changed", "", ""));
    const timespec later[] = {{status.st_mtime + 5, 0}, {status.st_mtime + 5, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, b.c_str(), later, 0), 0);
    putPreset(folder, "0.mvp", preset("New", "", ""));
    cached.scan();
    EXPECT_EQ(cached.cache.infoOf(a).author, "Ada");
    EXPECT_EQ(cached.cache.infoOf(a).label, "(0/1) a");  // the number is new
    EXPECT_EQ(cached.cache.infoOf(b).author, "Changed");
    EXPECT_EQ(cached.found("bo"), "");

    std::filesystem::remove(a);
    cached.scan();
    EXPECT_EQ(cached.cache.size(), 2u);
    EXPECT_EQ(cached.found("ada"), "");
}

TEST(PresetCache, KeepsWhatItKnowsInAFile)
{
    const TemporaryFolder folder;
    const std::string path = putPreset(folder, "a.mvp", preset("Ada", "D", "x,y"));
    const timespec times[] = {{7, 0}, {0x1234, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    Cached cached(folder);
    const std::string file = cached.data.read("PresetCache.dat");
    EXPECT_EQ(file, "mvPC" + number(4) + number(1) + text(cached.root) + number(1) + text(path) +
                        number(0x1234, 8) + text("a") + number(0) + number(0) + text("Ada") + text("D") +
                        number(2) + text("x") + text("y"));
    PresetCache again((cached.data / "PresetCache.dat").string());
    EXPECT_EQ(again.infoOf(path).description, "D");
    EXPECT_EQ(again.find("x").size(), 1u);
}

TEST(PresetCache, StartsEmptyWithAFileThatCantBeRead)
{
    const TemporaryFolder folder;
    const std::string good = "mvPC" + number(4) + number(0) + number(1) + text("/a.mvp") + number(1, 8) +
                             text("a") + number(0) + number(0) + text("") + text("") + number(0);
    for (std::size_t length = 0; length <= good.size(); ++length) {
        folder.write("c.dat", good.substr(0, length));
        EXPECT_EQ(PresetCache((folder / "c.dat").string()).size(), length == good.size() ? 1u : 0u) << length;
    }
    for (const std::string& bad :
         {"mvPD" + good.substr(4), "mvPC" + number(5) + good.substr(8), "mvPC" + number(0) + good.substr(8),
          "mvPC" + number(4) + number(0x7FFFFFFF)}) {
        folder.write("c.dat", bad);
        EXPECT_EQ(PresetCache((folder / "c.dat").string()).size(), 0u);
    }
}

TEST(PresetCache, BringsFavouritesOfOlderFilesToTheirRoots)
{
    const TemporaryFolder folder;
    const std::string path = putPreset(folder, "In/a.mvp", preset("Ada", "", ""));
    const std::string root = (folder / "").string();
    const std::string record = number(1) + text(path) + number(1, 8) + text("a") + number(0) + number(0) +
                               text("") + text("") + number(0);
    const std::string older = number(1) + text(path);
    struct Row {
        int version;
        std::string rest;
        bool hasFavorites;
    };
    for (const auto& [version, rest, hasFavorites] : {Row{1, record, false}, Row{2, record + older, true},
                                                      Row{3, number(1) + text(root) + record + older, true},
                                                      Row{4, number(1) + text(root) + record, false}}) {
        std::filesystem::remove(folder / "Favorites.txt");
        const TemporaryFolder data;
        const std::string bytes = "mvPC" + number(static_cast<std::uint64_t>(version)) + rest;
        data.write("c.dat", bytes);
        PresetCache cache((data / "c.dat").string());
        EXPECT_EQ(cache.size(), 1u);
        EXPECT_EQ(cache.isFavorite(PresetInfo(path)), hasFavorites) << version;
        // Without a root the favourites have no place yet, and stay where they are.
        EXPECT_EQ(data.read("c.dat") == bytes, version != 3);
        EXPECT_EQ(std::filesystem::exists(folder / "Favorites.txt"), version == 3);
        cache.update({}, {root});
        cache.waitForWorker();
        EXPECT_EQ(cache.isFavorite(PresetInfo(path)), hasFavorites) << version;
        EXPECT_EQ(folder.read("Favorites.txt").ends_with("\n\nIn/a.mvp\n"), hasFavorites);
        EXPECT_EQ(data.read("c.dat").substr(4, 4), number(4));
    }
}

TEST(PresetCache, ChangesFavouritesInTheirRoot)
{
    const TemporaryFolder folder;
    putPreset(folder, "In/a.mvp", preset("Ada", "D", "x"));
    putPreset(folder, "b.mvp", preset("Bo", "", ""));
    Cached cached(folder);
    int told = 0;
    cached.cache.favoritesChanged.addHandler(NotifyEvent::handler([&](void*) { ++told; }));
    EXPECT_EQ(cached.cache.setFavorite(cached["a"], true).message(), "");
    EXPECT_TRUE(cached.cache.isFavorite(cached["a"]));
    EXPECT_FALSE(cached.cache.isFavorite(cached["b"]));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(folder.read("In/a.mvp"), preset("Ada", "D", "x"));  // with what it said before

    // Another process.
    folder.write("Favorites.txt", "# mine\nb.mvp\nIn/a.mvp\n");
    EXPECT_EQ(cached.cache.setFavorite(cached["a"], false).message(), "");
    EXPECT_EQ(folder.read("Favorites.txt"), "# mine\nb.mvp\n");
    EXPECT_TRUE(cached.cache.isFavorite(cached["b"]));
    EXPECT_FALSE(cached.cache.setFavorite(PresetInfo("/elsewhere/x.mvp"), true).succeeded());
    EXPECT_EQ(told, 2);
}

TEST(PresetCache, StopsItsWorkerForANewList)
{
    const TemporaryFolder folder;
    for (int i = 0; i < 2000; ++i)
        putPreset(folder, joined("p", i, ".mvp"), preset("Ada", "words", "x"));
    Cached cached(folder);
    for (int round = 0; round < 5; ++round)
        cached.manager.rescan(cached.root);  // the worker may be anywhere
    cached.cache.waitForWorker();
    EXPECT_EQ(cached.cache.size(), 2000u);
    EXPECT_EQ(cached.cache.find("ada").size(), 2000u);
    cached.manager.rescan(cached.root);
}
