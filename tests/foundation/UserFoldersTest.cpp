#include "foundation/UserFolders.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace {

std::string documentsListedAs(const std::string& list)
{
    const TemporaryFolder folder;
    ScopedEnvironment environment;
    environment.set("HOME", "/home/anna");
    environment.set("XDG_CONFIG_HOME", folder / "");
    folder.write("user-dirs.dirs", list);
    return documentsFolder();
}

}  // namespace

TEST(UserFolders, FollowTheEnvironmentAndElseTheHome)
{
    struct Row {
        std::optional<std::string> data;
        const char* folder;
    };
    for (const auto& [data, folder] :
         {Row{std::nullopt, "/home/anna/.local/share/"}, Row{"", "/home/anna/.local/share/"},
          Row{"relative/data", "/home/anna/.local/share/"}, Row{"/data", "/data/"},
          Row{"/data/", "/data/"}}) {
        ScopedEnvironment environment;
        environment.set("HOME", "/home/anna");
        environment.set("XDG_DATA_HOME", data);
        environment.set("XDG_CONFIG_HOME", std::nullopt);
        EXPECT_EQ(applicationDataFolder(), folder);
        EXPECT_EQ(productDataFolder("Sordelin 2"), std::string(folder).append("Morvelane/Sordelin 2/"));
        EXPECT_EQ(configurationFolder(), "/home/anna/.config/");
    }
}

TEST(UserFolders, AskTheAccountWhereNoHomeIsSet)
{
    ScopedEnvironment environment;
    environment.set("XDG_DATA_HOME", std::nullopt);
    for (const std::optional<std::string>& home : {std::optional<std::string>(), {"not/absolute"}}) {
        environment.set("HOME", home);
        const std::string folder = applicationDataFolder();
        if (!folder.empty()) {  // an account without a home keeps nothing
            EXPECT_EQ(folder.front(), '/');
            EXPECT_TRUE(folder.ends_with("/.local/share/"));
        }
    }
}

TEST(UserFolders, FindDocumentsWhereTheDesktopListsThem)
{
    struct Row {
        const char* list;
        const char* folder;
    };
    for (const auto& [list, folder] : {
             Row{"", "/home/anna/Documents/"},
             Row{"# XDG_DOCUMENTS_DIR=\"/no\"\n", "/home/anna/Documents/"},
             Row{"XDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n",
                 "/home/anna/Dokumente/"},
             Row{"  XDG_DOCUMENTS_DIR=\"/mnt/my \\\"papers\\\"/\"", "/mnt/my \"papers\"/"},
             Row{"XDG_DOCUMENTS_DIR=\"$HOME/\"", "/home/anna/"},
             Row{"XDG_DOCUMENTS_DIR=\"$HOME\"", "/home/anna/"},
             Row{"XDG_DOCUMENTS_DIR=\"$HOMER/x\"", "/home/anna/Documents/"},
             Row{"XDG_DOCUMENTS_DIR=\"Dokumente\"", "/home/anna/Documents/"},
             Row{"XDG_DOCUMENTS_DIR=\"/unclosed", "/home/anna/Documents/"},
             Row{"XDG_DOCUMENTS_DIR=\"", "/home/anna/Documents/"},
         })
        EXPECT_EQ(documentsListedAs(list), folder) << list;
    const TemporaryHome home;
    EXPECT_EQ(presetFolder("Sordelin 2"), (home.folder / "Documents/Morvelane/Presets/Sordelin 2/").string());
}

TEST(UserFolders, KeepSettingsInAFileForEachKey)
{
    const TemporaryHome home;
    struct Row {
        std::string key;
        const char* expectedKey;
        const char* file;
    };
    for (const auto& [key, expectedKey, file] :
         {Row{settingsKey("Sordelin", 2), "Software\\Morvelane\\Sordelin\\2.0",
              "Morvelane/Sordelin/2.0.toml"},
          Row{settingsKey("Sordelin", 1), "Software\\Morvelane\\Sordelin\\1.0",
              "Morvelane/Sordelin/1.0.toml"},
          Row{settingsKey(), "Software\\Morvelane", "Morvelane.toml"}}) {
        EXPECT_EQ(key, expectedKey);
        EXPECT_EQ(settingsPath(key), (home.folder / "config").append(file).string());
    }
}
