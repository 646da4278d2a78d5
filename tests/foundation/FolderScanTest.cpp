#include "foundation/FolderScan.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <set>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

void put(const fs::path& file)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "x";
}

/// All files of a tree as paths, and the folders with a "/" behind them.
void collect(const FolderTree& tree, const std::string& above, std::set<std::string>& paths)
{
    for (const FolderTree::File& file : tree.files)
        paths.insert(above + file.name);
    for (const auto& folder : tree.folders) {
        paths.insert(above + folder->name + "/");
        collect(*folder, above + folder->name + "/", paths);
    }
}

std::set<std::string> pathsOf(const FolderTree& tree)
{
    std::set<std::string> paths;
    collect(tree, "", paths);
    return paths;
}

std::set<std::string> read(const fs::path& root, int budgetMs = 5000)
{
    return pathsOf(FolderScan().read((root / "").string(), ".mvp", milliseconds(budgetMs)));
}

/// A file system on which one folder doesn't answer before it is released.
class DeadMount : public FolderLister {
public:
    explicit DeadMount(std::string deadPath) : dead(std::move(deadPath)) {}
    void list(const std::string& path, std::string_view extension, Visitor& visitor) const override
    {
        if (path.starts_with(dead)) {
            std::unique_lock guard(lock);
            ++asked;
            released.wait(guard, [&] { return isReleased; });
        }
        FolderLister::list(path, extension, visitor);
    }
    void release()
    {
        const std::lock_guard guard(lock);
        isReleased = true;
        released.notify_all();
    }
    int timesAsked() const
    {
        const std::lock_guard guard(lock);
        return asked;
    }

private:
    const std::string dead;
    mutable std::mutex lock;
    mutable std::condition_variable released;
    mutable int asked = 0;
    bool isReleased = false;
};

/// A folder without end, one entry each millisecond.
class SlowFolder : public FolderLister {
public:
    void list(const std::string&, std::string_view, Visitor& visitor) const override
    {
        if (!visitor.enter({1, 1}))
            return;
        while (visitor.file("a.mvp", 0))
            std::this_thread::sleep_for(milliseconds(1));
    }
};

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

TEST(FolderScan, FindsFoldersAndTheFilesOfOneExtension)
{
    const TemporaryFolder folder;
    for (const char* file : {"a.mvp", "B.MVP", "c.mvp.txt", "mvp", ".mvp", ".hidden.mvp", "in/d.mvp",
                             "in/deep/e.mvp", "empty/x", ".git/f.mvp"})
        put(folder / file);
    mkfifo((folder / "pipe.mvp").c_str(), 0600);
    fs::create_symlink(folder / "a.mvp", folder / "link.mvp");
    fs::create_symlink("nowhere", folder / "broken.mvp");
    EXPECT_EQ(read(folder / ""), (std::set<std::string>{"a.mvp", "B.MVP", "link.mvp", "in/", "in/d.mvp",
                                                        "in/deep/", "in/deep/e.mvp", "empty/"}));
    EXPECT_TRUE(read(folder / "missing").empty());
    EXPECT_TRUE(read(folder / "a.mvp").empty());
}

TEST(FolderScan, TellsWhenAFileWasWritten)
{
    const TemporaryFolder folder;
    put(folder / "a.mvp");
    const timespec times[] = {{5, 0}, {1234567890, 999999999}};
    ASSERT_EQ(utimensat(AT_FDCWD, (folder / "a.mvp").c_str(), times, 0), 0);
    const FolderTree tree = FolderScan().read((folder / "").string(), ".mvp", milliseconds(5000));
    ASSERT_EQ(tree.files.size(), 1u);
    EXPECT_EQ(tree.files[0].modificationTime, 1234567890u);
}

TEST(FolderScan, EndsWhereAFolderLiesInItself)
{
    const TemporaryFolder folder;
    put(folder / "one/a.mvp");
    put(folder / "two/b.mvp");
    fs::create_directory_symlink("..", folder / "one/up");
    fs::create_directory_symlink("../two", folder / "one/other");
    fs::create_directory_symlink("../one", folder / "two/other");
    fs::create_directory_symlink(folder / "one/self", folder / "one/self");
    EXPECT_EQ(read(folder / ""),
              (std::set<std::string>{"one/", "one/a.mvp", "one/up/", "one/other/", "one/other/b.mvp",
                                     "one/other/other/", "two/", "two/b.mvp", "two/other/", "two/other/a.mvp",
                                     "two/other/up/", "two/other/other/"}));
}

TEST(FolderScan, LeavesOutWhatDoesntAnswerAndDoesntAskAgainMeanwhile)
{
    const TemporaryFolder folder;
    for (const char* file : {"a.mvp", "dead/b.mvp", "dead/more/c.mvp"})
        put(folder / file);
    const std::string root = (folder / "").string();
    const auto mount = std::make_shared<DeadMount>(root + "dead/");
    {
        FolderScan scan(mount);
        auto start = Clock::now();
        EXPECT_EQ(pathsOf(scan.read(root, ".mvp", milliseconds(50))),
                  (std::set<std::string>{"a.mvp", "dead/"}));
        EXPECT_LT(millisecondsSince(start), 50 + 250 + 400);
        EXPECT_EQ(mount->timesAsked(), 1);

        start = Clock::now();
        EXPECT_EQ(pathsOf(scan.read(root, ".mvp", milliseconds(5000))),
                  (std::set<std::string>{"a.mvp", "dead/"}));
        EXPECT_FALSE(scan.exists(root + "dead/more", milliseconds(5000)));
        EXPECT_LT(millisecondsSince(start), 1000);
        EXPECT_EQ(mount->timesAsked(), 1);

        mount->release();
        std::set<std::string> found;
        for (int i = 0; i < 500 && found.size() < 5; ++i)
            found = pathsOf(scan.read(root, ".mvp", milliseconds(5000)));
        EXPECT_EQ(found,
                  (std::set<std::string>{"a.mvp", "dead/", "dead/b.mvp", "dead/more/", "dead/more/c.mvp"}));
    }
}

TEST(FolderScan, OutlivesWhoAsked)
{
    const auto mount = std::make_shared<DeadMount>("/");
    EXPECT_FALSE(FolderScan(mount).exists("/", milliseconds(20)));
    mount->release();  // the thread that was left behind finds all it needs
    while (mount.use_count() > 1)
        std::this_thread::sleep_for(milliseconds(1));
}

TEST(FolderScan, EndsAHugeFolderInTime)
{
    const auto start = Clock::now();
    const FolderTree tree =
        FolderScan(std::make_shared<SlowFolder>()).read("/slow/", ".mvp", milliseconds(100));
    EXPECT_LT(millisecondsSince(start), 100 + 250 + 400);
    EXPECT_GT(tree.files.size(), 20u);
    EXPECT_LT(tree.files.size(), 240u);  // in 225 ms
}
