#include "presets/PresetFile.h"
#include "presets/CollectionPresetLoader.h"
#include "support/PresetFixture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

namespace {

using Values = std::vector<float>;

struct PresetFileTest : testing::Test, PresetFixture {
    std::string path(const char* name) const { return folder / name; }
    TemporaryFolder folder;
    ErrorResult result;
};

TEST_F(PresetFileTest, KeepsWhatItWrites)
{
    const PresetWriter writer(collection, nullptr);
    set({4.0f, 5.0f, 6.0f});
    for (const PresetFile::Form form : {PresetFile::Form::Binary, PresetFile::Form::Text}) {
        const PresetFile file(path("a.mvp"));
        EXPECT_TRUE(file.write(writer, result, 2, form));
        set({0.0f, 0.0f, 0.0f});
        CollectionPresetLoader loader(collection);
        EXPECT_TRUE(file.read(loader, result, 2)) << result.message();
        EXPECT_EQ(values(), (Values{4.0f, 5.0f, 6.0f}));
    }
    EXPECT_TRUE(folder.read("a.mvp").starts_with("[Preset]\n"));
    EXPECT_EQ(folder.entryCount(), 1);
}

TEST_F(PresetFileTest, RewritesOnlyAFileOfItsKind)
{
    const PresetWriter writer(collection, nullptr);
    const PresetFile file(path("a.mvp"));
    EXPECT_FALSE(file.rewrite(writer, result, 2, 1, 1));
    EXPECT_EQ(folder.entryCount(), 0);
    const std::string before = presetBytes("Test", 2, {7.0f, 8.0f, 9.0f}) + "tail";
    folder.write("a.mvp", before);
    EXPECT_FALSE(file.rewrite(writer, result, 3, 1, 1));
    EXPECT_EQ(folder.read("a.mvp"), before);
    result = ErrorResult();
    set({4.0f, 5.0f, 6.0f});
    EXPECT_TRUE(file.rewrite(writer, result, 2, 1, 1));
    EXPECT_EQ(folder.read("a.mvp"), presetBytes("Test", 2, {7.0f, 5.0f, 9.0f}) + "tail");
}

TEST_F(PresetFileTest, LeavesTheOldFileWhereverTheNewOneStops)
{
    // The system takes no more than so many bytes of any file: as far as a killed writer would have come.
    const PresetWriter writer(collection, nullptr);
    const PresetFile file(path("a.mvp"));
    const std::string before = presetBytes("Test", 2, {7.0f, 8.0f, 9.0f});
    folder.write("a.mvp", before);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (rlim_t bytes = 0; bytes < before.size(); ++bytes) {
        const rlimit small{bytes, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const bool rewritten = file.rewrite(writer, result, 2, 1, 1);
        const bool written = file.write(writer, result, 2);
        setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_FALSE(rewritten || written) << bytes;
        EXPECT_EQ(folder.read("a.mvp"), before);
        EXPECT_EQ(folder.entryCount(), 1);
    }
    std::signal(SIGXFSZ, handler);
}

TEST_F(PresetFileTest, SaysWhatCannotBeReadOrWritten)
{
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    for (const char* name : {"none.mvp", "", "pipe"}) {
        ErrorResult unread;
        CollectionPresetLoader loader(collection);
        EXPECT_FALSE(PresetFile(path(name)).read(loader, unread));
        EXPECT_EQ(unread.message(), "Incorrect file permissions or corrupt preset file.");
    }
    EXPECT_FALSE(PresetFile(path("no/folder.mvp")).write(PresetWriter(collection, nullptr), result, 1));
    EXPECT_NE(result.message().find("No such file or directory"), std::string::npos) << result.message();
}

}  // namespace
