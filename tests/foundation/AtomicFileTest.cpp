#include "foundation/AtomicFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <sys/resource.h>

namespace {

ErrorResult replace(const std::string& path, const std::string& contents)
{
    ErrorResult result;
    AtomicFile file(path);
    file.stream() << contents;
    const bool done = file.commit(result);
    EXPECT_EQ(done, result.succeeded());
    return result;
}

mode_t modeOf(const std::string& path)
{
    struct stat status {};
    stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

/// No file may grow beyond `bytes` meanwhile, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before{};
    void (*handler)(int);
};

}  // namespace

TEST(AtomicFile, TouchesNothingBeforeItIsCommitted)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    {
        AtomicFile file(folder / "file");
        file.stream() << "new";
        EXPECT_EQ(folder.entryCount(), 1);
    }
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_TRUE(replace(folder / "file", "new").succeeded());
    EXPECT_EQ(folder.read("file"), "new");
    EXPECT_EQ(folder.entryCount(), 1);
}

TEST(AtomicFile, KeepsPermissionsAndGivesTheUsualOnesToANewFile)
{
    const TemporaryFolder folder;
    folder.write("shared", "old");
    folder.write("private", "old");
    chmod((folder / "shared").c_str(), 0664);
    chmod((folder / "private").c_str(), 0600);
    const mode_t mask = umask(0027);
    replace(folder / "shared", "new");
    replace(folder / "private", "new");
    replace(folder / "fresh", "new");
    umask(mask);
    EXPECT_EQ(modeOf(folder / "shared"), 0664u);
    EXPECT_EQ(modeOf(folder / "private"), 0600u);
    EXPECT_EQ(modeOf(folder / "fresh"), 0640u);  // 0666 without 0027
}

TEST(AtomicFile, ReplacesWhatALinkPointsAt)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "real");
    folder.write("real/file", "old");
    std::filesystem::create_symlink("real/file", folder / "near");
    std::filesystem::create_symlink("near", folder / "link");
    std::filesystem::create_symlink("real/fresh", folder / "dangling");
    EXPECT_TRUE(replace(folder / "link", "new").succeeded());
    EXPECT_TRUE(replace(folder / "dangling", "made").succeeded());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "near"));
    EXPECT_EQ(folder.read("real/file"), "new");
    EXPECT_EQ(folder.read("real/fresh"), "made");
}

TEST(AtomicFile, SaysWhyItCannotWriteAndLeavesNothing)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink("round", folder / "round");
    struct Row {
        std::string path;
        const char* reason;
    };
    for (const auto& [path, reason] :
         {Row{folder / "file/below", "Not a directory"}, Row{folder / "missing/file", "No such file"},
          Row{folder / "folder", "Is a directory"}, Row{folder / "round", "Too many levels"},
          Row{"/dev/null", "Invalid argument"}, Row{"", "No such file"}}) {
        const ErrorResult result = replace(path, "new");
        EXPECT_EQ(result.code(), -1) << path;
        EXPECT_EQ(result.message().find("Can't write \"" + path + "\": " + reason), 0u) << result.message();
    }
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_EQ(folder.entryCount(), 3);
}

TEST(AtomicFile, KeepsTheOldFileWhenTheDiskIsFull)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    ErrorResult result;
    {
        const FullDisk disk(1000);
        result = replace(folder / "file", std::string(5000, 'x'));
    }
    EXPECT_NE(result.message().find("File too large"), std::string::npos) << result.message();
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_EQ(folder.entryCount(), 1);
}
