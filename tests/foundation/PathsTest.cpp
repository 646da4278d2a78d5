#include "foundation/Paths.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

TEST(Paths, TakesAPathApart)
{
    struct Row {
        const char* path;
        const char* folder;
        const char* file;
        const char* base;
    };
    for (const auto& [path, folder, file, base] :
         {Row{"/a/b.c/My.Sound.mvp", "/a/b.c/", "My.Sound.mvp", "My.Sound"},
          Row{"plain", "", "plain", "plain"}, Row{"/a/b/", "/a/b/", "", ""}, Row{"/a.b/c", "/a.b/", "c", "c"},
          Row{"", "", "", ""}}) {
        EXPECT_EQ(folderOf(path), folder);
        EXPECT_EQ(fileName(path), file);
        EXPECT_EQ(baseName(path), base);
    }
    EXPECT_EQ(withSeparator("/a"), "/a/");
    EXPECT_EQ(withSeparator("/a/"), "/a/");
    EXPECT_EQ(withSeparator(""), "");
}

TEST(Paths, MakesFoldersAndTellsThemFromFiles)
{
    const TemporaryFolder folder;
    folder.write("file", "");
    const std::string file = folder / "file";
    const std::string deep = folder / "a/b/c";
    EXPECT_FALSE(folderExists(deep));
    for (const std::string& made : {deep, deep + "/", deep})
        EXPECT_TRUE(createFolders(made));
    EXPECT_TRUE(folderExists(deep));
    EXPECT_FALSE(fileExists(deep));
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(folderExists(file));
    EXPECT_FALSE(createFolders(file));
    EXPECT_FALSE(createFolders(file + "/below"));
    EXPECT_FALSE(createFolders(""));
    EXPECT_FALSE(fileExists(folder / "missing"));
}
