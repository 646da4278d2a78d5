#include "presets/FactoryArchive.h"

#include "support/ArchiveBytes.h"
#include "support/MemoryFolders.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>

namespace {

namespace fs = std::filesystem;
using Existing = FactoryArchive::Existing;

/// A folder to unpack into, within one that must stay empty otherwise.
struct Target {
    bool unpack(const std::string& archive, const char* folder = "Wanted",
                Existing existing = Existing::Keep) const
    {
        return FactoryArchive(std::as_bytes(std::span(archive))).extract(folder, path(), existing);
    }
    std::string path() const { return (outer / "target").string(); }
    /// Everything below the target, folders with a "/" behind them.
    std::map<std::string, std::string> content() const
    {
        std::map<std::string, std::string> found;
        if (!fs::exists(path()))
            return found;
        for (const auto& entry : fs::recursive_directory_iterator(path())) {
            const std::string name = fs::relative(entry.path(), path()).string();
            if (entry.is_directory()) {
                found[name + "/"];
            } else {
                std::ifstream file(entry.path(), std::ios::binary);
                found[name] = std::string(std::istreambuf_iterator<char>(file), {});
            }
        }
        return found;
    }
    void expectNothingOutside() const
    {
        for (const auto& entry : fs::directory_iterator(outer / ""))
            EXPECT_EQ(entry.path().filename(), "target");
    }

    const MemoryFolders fast;
    TemporaryFolder outer;
};

const std::string big(100000, 'b');
const std::string wantedEntries = archiveFile("a.mvp", "first")
                                      .append(archiveFolder("_2 In", archiveFile("b.mvp", big)))
                                      .append(archiveFile("empty.mvp", ""))
                                      .append(archiveFolder("None", ""));
const std::string archive =
    archiveOf(archiveFile("Wanted", "a file, not the folder")
                  .append(archiveFolder("Other", archiveFolder("Wanted", archiveFile("x.mvp", "x"))))
                  .append(archiveFolder("Wanted", wantedEntries))
                  .append(archiveFolder("Last", archiveFile("l.mvp", "l"))));

}  // namespace

TEST(FactoryArchive, UnpacksOneFolderOfItsTop)
{
    for (const char* name : {"Wanted", "WANTED", "wanteD"}) {
        const Target target;
        EXPECT_TRUE(target.unpack(archive, name));
        EXPECT_EQ(
            target.content(),
            (std::map<std::string, std::string>{
                {"a.mvp", "first"}, {"_2 In/", ""}, {"_2 In/b.mvp", big}, {"empty.mvp", ""}, {"None/", ""}}));
        target.expectNothingOutside();
    }
    const Target target;
    EXPECT_FALSE(target.unpack(archive, "Want"));
    EXPECT_FALSE(target.unpack("MV/ISB/4" + archive.substr(8)));
    EXPECT_FALSE(target.unpack(""));
    EXPECT_FALSE(fs::exists(target.path()));
    EXPECT_FALSE(FactoryArchive(std::as_bytes(std::span(archive))).extract("Wanted", "", Existing::Keep));
}

TEST(FactoryArchive, KeepsFilesThatAreThereUnlessToldToReplaceThem)
{
    const Target target;
    fs::create_directories(target.path());
    std::ofstream(target.path() + "/a.mvp") << "mine";
    EXPECT_TRUE(target.unpack(archive));
    EXPECT_EQ(target.content()["a.mvp"], "mine");
    EXPECT_EQ(target.content()["_2 In/b.mvp"], big);
    EXPECT_TRUE(target.unpack(archive, "Wanted", Existing::Replace));
    EXPECT_EQ(target.content()["a.mvp"], "first");
}

TEST(FactoryArchive, GoesOnBehindWhatItCantUnpack)
{
    const std::string stream = deflated("content");  // 7 bytes
    const auto size = static_cast<std::uint32_t>(stream.size());
    const auto file = [&](const std::string& name, std::uint32_t unpacked) {
        return archiveEntry(name, size, unpacked).append(stream);
    };
    std::string tooDeep = archiveFile("deep.mvp", "x");
    for (int depth = 0; depth < 40; ++depth)
        tooDeep = archiveFolder("d", tooDeep);
    for (const std::string& bad :
         {file("short.mvp", 6), file("long.mvp", 8), file("huge.mvp", 0xFFFFFFFE),
          archiveEntry("junk.mvp", 4, 4).append("junk"), archiveEntry("none.mvp", 0, 5),
          file("../out.mvp", 7), file("/tmp/sordelin-out.mvp", 7), file("a/b.mvp", 7), file("..", 7),
          file(".", 7), file("a\\b.mvp", 7), file(std::string("nul\0.mvp", 8), 7),
          archiveFolder("..", archiveFile("out.mvp", "x")),
          archiveFolder("In/..", archiveFile("out.mvp", "x")), archiveFolder("deep", tooDeep),
          archiveEntry("unended", 76 + size, 0xFFFFFFFF).append(file("in.mvp", 7))}) {
        const Target target;
        EXPECT_FALSE(
            target.unpack(archiveOf(archiveFolder("Wanted", bad + archiveFile("good.mvp", "good")))));
        EXPECT_EQ(target.content()["good.mvp"], "good");
        for (const auto& [name, content] : target.content()) {
            EXPECT_TRUE(name == "good.mvp" || name == "in.mvp" || name == "unended/in.mvp" ||
                        name.ends_with('/'))
                << name;
        }
        target.expectNothingOutside();
    }
    EXPECT_FALSE(fs::exists("/tmp/sordelin-out.mvp"));
}

TEST(FactoryArchive, StopsWhereSizesLeadOutOfTheData)
{
    for (const std::string& bad :
         {archiveEntry("big.mvp", 1000000, 5), archiveEntry("big.mvp", 0xFFFFFFFF, 5),
          archiveEntry("big", 0xFFFFFFFF, 0xFFFFFFFF), std::string(1, '\x44').append(std::string(75, 'n'))}) {
        const Target target;
        EXPECT_FALSE(
            target.unpack(archiveOf(archiveFolder("Wanted", archiveFile("good.mvp", "good") + bad))));
        EXPECT_EQ(target.content().size(), 1u);
        const Target top;
        EXPECT_FALSE(top.unpack(archiveOf(bad + archiveFolder("Wanted", archiveFile("good.mvp", "good")))));
    }
}

TEST(FactoryArchive, AnyPieceOfItUnpacksWholeFilesOrNone)
{
    const std::string small = archiveOf(archiveFolder(
        "Wanted", archiveFile("a.mvp", "first").append(archiveFolder("In", archiveFile("b.mvp", "second")))));
    const std::size_t behindWanted = small.size() - 76;
    for (std::size_t length = 0; length <= small.size(); ++length) {
        const Target target;
        EXPECT_EQ(target.unpack(small.substr(0, length)), length >= behindWanted) << length;
        for (const auto& [name, content] : target.content()) {
            EXPECT_EQ(content, name.ends_with('/') ? "" : name == "a.mvp" ? "first" : "second");
        }
        target.expectNothingOutside();
    }
}

TEST(FactoryArchive, StaysInItsFolderWhateverItHolds)
{
    const std::string small = archiveOf(archiveFolder(
        "Wanted", archiveFile("a.mvp", "first").append(archiveFolder("In", archiveFile("b.mvp", "second")))));
    std::minstd_rand random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string damaged = small;
        for (int i = 0; i < 3; ++i)
            damaged[61 + random() % (small.size() - 61)] = "\0\1\2./\xFF"[random() % 6];
        const Target target;
        target.unpack(damaged);
        target.expectNothingOutside();
    }
}
