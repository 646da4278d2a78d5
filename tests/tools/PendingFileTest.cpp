#include "render/PendingFile.h"

#include "render/RenderError.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

void writeTo(const PendingFile& file, const std::string& content) { std::ofstream(file.path()) << content; }

}  // namespace

TEST(PendingFile, AppearsUnderItsNameOnlyWhenCommitted)
{
    const TemporaryFolder folder;
    PendingFile file(folder / "out.wav", PendingFile::Existing::Refuse);
    writeTo(file, "new");
    EXPECT_FALSE(std::filesystem::exists(folder / "out.wav"));
    file.commit();
    EXPECT_EQ(folder.read("out.wav"), "new");
    EXPECT_EQ(folder.entryCount(), 1);
}

TEST(PendingFile, LeavesNothingAndKeepsTheOldFileWhenAbandoned)
{
    const TemporaryFolder folder;
    folder.write("out.wav", "old");
    {
        const PendingFile file(folder / "out.wav", PendingFile::Existing::Replace);
        writeTo(file, "half");
    }
    EXPECT_EQ(folder.read("out.wav"), "old");
    EXPECT_EQ(folder.entryCount(), 1);
}

TEST(PendingFile, RefusesOrReplacesAnExistingFile)
{
    const TemporaryFolder folder;
    folder.write("out.wav", "old");
    EXPECT_THROW(PendingFile(folder / "out.wav", PendingFile::Existing::Refuse), RenderError);

    PendingFile replacing(folder / "out.wav", PendingFile::Existing::Replace);
    writeTo(replacing, "new");
    replacing.commit();
    EXPECT_EQ(folder.read("out.wav"), "new");
}

TEST(PendingFile, RefusesAFileThatAppearedMeanwhile)
{
    const TemporaryFolder folder;
    PendingFile file(folder / "out.wav", PendingFile::Existing::Refuse);
    writeTo(file, "new");
    folder.write("out.wav", "somebody else's");
    EXPECT_THROW(file.commit(), RenderError);
    EXPECT_EQ(folder.read("out.wav"), "somebody else's");
}

TEST(PendingFile, NeedsAFolderToWriteInto)
{
    const TemporaryFolder folder;
    EXPECT_THROW(PendingFile(folder / "missing" / "out.wav", PendingFile::Existing::Refuse), RenderError);
    EXPECT_THROW(PendingFile(folder / "", PendingFile::Existing::Replace), RenderError);
}
