#include "foundation/SettingsFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>

#include <thread>

namespace {

struct SettingsFileTest : testing::Test {
    TemporaryFolder folder;
    SettingsFile file{folder / "Maker/Product/2.0.toml"};
};

/// Writes `count` times, each time its two own values together, and reads what it wrote.
bool writeMany(const SettingsFile& file, const std::string& name, int count)
{
    for (int i = 1; i <= count; ++i) {
        const SettingValues values{{name + "A", i},
                                   {name + "B", std::string(static_cast<std::size_t>(i % 50), 'x')}};
        if (!file.write(values))
            return false;
        const SettingValues read = file.read();
        for (const auto& [key, value] : values) {
            const auto found = read.find(key);
            if (found == read.end() || found->second != value)
                return false;
        }
    }
    return true;
}

}  // namespace

TEST_F(SettingsFileTest, KeepsWhatItWasGivenAndWhatWasThere)
{
    EXPECT_TRUE(file.read().empty());
    EXPECT_TRUE(file.write({{"A", 1}, {"B", "two"}}));
    EXPECT_TRUE(file.write({{"A", 3}}));
    EXPECT_EQ(file.read(), (SettingValues{{"A", 3}, {"B", "two"}}));
    folder.write("Maker/Product/2.0.toml", "# mine\nB = \"two\" # too\nOther = 1.5\n");
    EXPECT_TRUE(file.write({{"A", 3}, {"B", "2"}}));
    EXPECT_EQ(folder.read("Maker/Product/2.0.toml"), "# mine\nB = \"2\" # too\nOther = 1.5\nA = 3\n");
}

TEST_F(SettingsFileTest, LeavesTheFileAloneWhenNothingChanges)
{
    file.write({{"A", 1}});
    struct stat before {
    }, after{};
    stat((folder / "Maker/Product/2.0.toml").c_str(), &before);
    EXPECT_TRUE(file.write({{"A", 1}}));
    stat((folder / "Maker/Product/2.0.toml").c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(SettingsFileTest, KeepsADamagedFileAside)
{
    file.write({{"A", 1}});
    for (const char* aside : {"2.0.damaged.toml", "2.0.damaged-2.toml"}) {
        folder.write("Maker/Product/2.0.toml", "A = 5\nthe power went \xFF");
        EXPECT_TRUE(file.read().empty());
        EXPECT_TRUE(file.write({{"B", 2}}));
        EXPECT_EQ(file.read(), (SettingValues{{"B", 2}}));
        EXPECT_EQ(folder.read(std::string("Maker/Product/").append(aside).c_str()),
                  "A = 5\nthe power went \xFF");
    }
}

TEST_F(SettingsFileTest, DropsAWriteThatHasNoPlace)
{
    EXPECT_FALSE(SettingsFile("").write({{"A", 1}}));
    EXPECT_TRUE(SettingsFile("").read().empty());
    folder.write("file", "");
    EXPECT_FALSE(SettingsFile(folder / "file/2.0.toml").write({{"A", 1}}));
    // A pipe would keep a reader waiting for ever.
    ASSERT_EQ(mkfifo((folder / "pipe.toml").c_str(), 0600), 0);
    EXPECT_TRUE(SettingsFile(folder / "pipe.toml").read().empty());
    EXPECT_FALSE(SettingsFile(folder / "pipe.toml").write({{"A", 1}}));
    folder.write("huge.toml", std::string(3 << 20, '\n'));
    EXPECT_FALSE(SettingsFile(folder / "huge.toml").write({{"A", 1}}));
}

TEST_F(SettingsFileTest, DropsAWriteToAFolderThatMayOnlyBeRead)
{
    file.write({{"A", 1}});
    const std::filesystem::path place = folder / "Maker/Product";
    std::filesystem::remove(place / ".2.0.toml.lock");
    using std::filesystem::perms;
    const auto readable = static_cast<perms>(0555);
    std::filesystem::permissions(folder / "", static_cast<perms>(0755));
    std::filesystem::permissions(place, readable);
    const pid_t child = fork();
    if (child == 0) {
        // The superuser may write anywhere.
        const bool common = geteuid() != 0 || setuid(65534) == 0;
        const bool dropped = !file.write({{"A", 2}}) && file.read() == SettingValues{{"A", 1}};
        _exit(common && dropped ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    std::filesystem::permissions(place, perms::owner_all);
    EXPECT_EQ(file.read(), (SettingValues{{"A", 1}}));
}

TEST_F(SettingsFileTest, GivesUpOnAWriterThatNeverEnds)
{
    file.write({{"A", 1}});
    const int other = open((folder / "Maker/Product/.2.0.toml.lock").c_str(), O_RDWR);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    EXPECT_FALSE(SettingsFile(folder / "Maker/Product/2.0.toml", 20).write({{"A", 2}}));
    EXPECT_EQ(file.read(), (SettingValues{{"A", 1}}));  // reading waits for nobody
    close(other);
    EXPECT_TRUE(file.write({{"A", 2}}));
}

TEST_F(SettingsFileTest, LosesNothingBetweenProcessesAndThreads)
{
    // Three writers without a pause: on a busy machine one may wait for its turn for long.
    SettingsFile patient(folder / "Maker/Product/2.0.toml", 60000);
    const pid_t child = fork();
    if (child == 0)
        _exit(writeMany(patient, "Child", 1000) ? 0 : 1);
    bool threadKept = false;
    std::thread thread([&] { threadKept = writeMany(patient, "Thread", 500); });
    EXPECT_TRUE(writeMany(patient, "Parent", 1000));
    thread.join();
    EXPECT_TRUE(threadKept);
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    const SettingValues values = file.read();
    EXPECT_EQ(values.size(), 6u);
    EXPECT_EQ(values.at("ChildA"), SettingValue(1000));
    EXPECT_EQ(values.at("ParentA"), SettingValue(1000));
    EXPECT_EQ(values.at("ThreadA"), SettingValue(500));
    // Nothing is left beside it but the lock.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "Maker/Product"),
                            std::filesystem::directory_iterator()),
              2);
}
