#include "presets/FavoritesFile.h"

#include "support/MemoryFolders.h"
#include "support/PresetFiles.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <set>

namespace {

using Paths = std::vector<std::string>;

const std::string heading =
    "# == Morvelane Preset Favorites File ==\n"
    "# This file contains all favorites in this folder and its subfolders.\n"
    "# Each file must be a valid relative *nix path (for example \"Bass/Test.mvp\").\n"
    "# Note: Paths are case sensitive across all operating systems.\n"
    "# Lines starting with a '#' will be ignored.\n"
    "\n";

struct Root {
    std::string path(const char* name) const { return (folder / name).string(); }
    FavoritesFile file() const { return FavoritesFile(path("")); }
    std::string content() const { return folder.read("Favorites.txt"); }

    const MemoryFolders fast;
    TemporaryFolder folder;
};

/// Adds and removes favourites as one of several processes, some hundred times. 0 if all went well.
int keepChanging(const Root& root, int process)
{
    for (int i = 0; i < 500; ++i) {
        const std::string path = root.path(joined("P", process, "/", i, ".mvp").c_str());
        const std::string passing = root.path(joined("Passing", process, ".mvp").c_str());
        if (!root.file().change({path, passing}, {}).succeeded() ||
            !root.file().change({}, {passing}).succeeded())
            return 1;
        const Paths all = root.file().read();
        if (std::find(all.begin(), all.end(), path) == all.end() || root.content().rfind(heading, 0) != 0)
            return 2;
    }
    return 0;
}

}  // namespace

TEST(FavoritesFile, NamesFullPathsLineByLine)
{
    const Root root;
    root.folder.write("Favorites.txt", "# comment\n\nBass/Test.mvp\n Top.mvp\r\n#No.mvp\nA B/c d.mvp");
    EXPECT_EQ(root.file().read(),
              (Paths{root.path("Bass/Test.mvp"), root.path(" Top.mvp"), root.path("A B/c d.mvp")}));
    EXPECT_TRUE(FavoritesFile(root.path("missing")).read().empty());
    EXPECT_TRUE(FavoritesFile("").read().empty());
}

TEST(FavoritesFile, BeginsANewFileWithAnExplanation)
{
    const Root root;
    EXPECT_TRUE(
        root.file().change({root.path("b.mvp"), root.path("In/a.mvp"), root.path("b.mvp")}, {}).succeeded());
    EXPECT_EQ(root.content(), heading + "b.mvp\nIn/a.mvp\n");
}

TEST(FavoritesFile, KeepsTheUsersLinesInTheirPlaces)
{
    const Root root;
    const std::string before = "# mine\nb.mvp\n\nc.mvp\r\n# more\na.mvp";
    root.folder.write("Favorites.txt", before);
    EXPECT_TRUE(
        root.file()
            .change({root.path("d.mvp"), root.path("a.mvp"), "/elsewhere/x.mvp"}, {root.path("c.mvp")})
            .succeeded());
    EXPECT_EQ(root.content(), "# mine\nb.mvp\n\n# more\na.mvp\nd.mvp\n");
    EXPECT_FALSE(FavoritesFile(root.path("missing")).change({root.path("missing/x.mvp")}, {}).succeeded());
    EXPECT_FALSE(FavoritesFile("").change({"x"}, {}).succeeded());
}

TEST(FavoritesFile, LosesNothingToOtherProcesses)
{
    const Root root;
    pid_t children[2];
    for (int process = 0; process < 2; ++process) {
        children[process] = fork();
        ASSERT_GE(children[process], 0);
        if (children[process] == 0)
            _exit(keepChanging(root, process));
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << WEXITSTATUS(status);
    }
    const Paths all = root.file().read();
    EXPECT_EQ(all.size(), 1000u);
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), 1000u);
}
