#include "foundation/FileEnumerator.h"

#include "foundation/Paths.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <set>

namespace {

using Names = std::set<std::string>;
using Kind = FileEnumerator::Kind;

Names namesOf(const std::string& pattern, Kind kind)
{
    Names names;
    const auto entries = createFileEnumerator(pattern, kind);
    while (entries->next())
        EXPECT_TRUE(names.insert(entries->name()).second) << entries->name() << " twice";
    EXPECT_FALSE(entries->next());  // stays at the end
    return names;
}

}  // namespace

TEST(FileEnumerator, TakesWhatThePatternMatches)
{
    const TemporaryFolder folder;
    for (const char* name :
         {"a.mvp", "B.MVP", "ab.mvp.txt", "\xC3\xBC \xE2\x99\xAA.mvp", "mvp", ".mvp", ".hidden.mvp"})
        folder.write(name, "");
    std::filesystem::create_directory(folder / "folder.mvp");
    struct Row {
        const char* pattern;
        Names expected;
    };
    for (const auto& [pattern, expected] : {
             Row{"*.mvp", {"a.mvp", "B.MVP", "\xC3\xBC \xE2\x99\xAA.mvp"}},
             Row{"*", {"a.mvp", "B.MVP", "ab.mvp.txt", "\xC3\xBC \xE2\x99\xAA.mvp", "mvp"}},
             Row{"a*.*", {"a.mvp", "ab.mvp.txt"}},
             Row{"*b*p*t", {"ab.mvp.txt"}},
             Row{"**b**", {"B.MVP", "ab.mvp.txt"}},
             Row{"mvp", {"mvp"}},
             Row{"MVP", {"mvp"}},
             Row{".*", {".mvp", ".hidden.mvp"}},
             Row{"?.mvp", {}},
             Row{"[ab].mvp", {}},
             Row{"", {}},
         })
        EXPECT_EQ(namesOf(folder / pattern, Kind::Files), expected) << pattern;
    EXPECT_EQ(namesOf(folder / "*", Kind::Folders), Names{"folder.mvp"});
    EXPECT_EQ(namesOf(folder / ".*", Kind::Folders), Names{});  // neither "." nor ".."
}

TEST(FileEnumerator, FindsNothingWhereThereIsNoFolder)
{
    const TemporaryFolder folder;
    folder.write("file", "");
    for (const char* pattern : {"missing/*", "file/*", "*"})
        EXPECT_EQ(namesOf(folder / pattern, Kind::Folders), Names{});
    EXPECT_EQ(namesOf("", Kind::Files), Names{});
}

TEST(FileEnumerator, CountsALinkAsWhatItPointsAt)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "real");
    folder.write("file", "");
    std::filesystem::create_symlink("real", folder / "to folder");
    std::filesystem::create_symlink("file", folder / "to file");
    std::filesystem::create_symlink(".", folder / "here");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    std::filesystem::create_symlink("round", folder / "round");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(namesOf(folder / "*", Kind::Folders), (Names{"real", "to folder", "here"}));
    EXPECT_EQ(namesOf(folder / "*", Kind::Files), (Names{"file", "to file"}));
    EXPECT_EQ(namesOf(folder / "here/here/f*", Kind::Files), Names{"file"});
}

TEST(FileEnumerator, TellsWhenAnEntryWasWritten)
{
    const TemporaryFolder folder;
    for (const std::int64_t seconds : {std::int64_t{0}, std::int64_t{1234567890}, std::int64_t{5000000000}}) {
        folder.write("file", "");
        const timespec times[2] = {{0, 0}, {static_cast<time_t>(seconds), 999999999}};
        ASSERT_EQ(utimensat(AT_FDCWD, (folder / "file").c_str(), times, 0), 0);
        const auto entries = createFileEnumerator(folder / "*", Kind::Files);
        ASSERT_TRUE(entries->next());
        EXPECT_EQ(entries->modificationTime(), seconds);
    }
}

TEST(FileEnumerator, PassesOverWhatVanishesOnTheWay)
{
    const TemporaryFolder folder;
    for (int i = 0; i < 200; ++i)
        folder.write(std::to_string(i).append(".mvp").c_str(), "");
    const auto entries = createFileEnumerator(folder / "*.mvp", Kind::Files);
    ASSERT_TRUE(entries->next());
    for (int i = 0; i < 200; ++i)
        std::filesystem::remove(folder / std::to_string(i).append(".mvp").c_str());
    EXPECT_FALSE(entries->next());
}
