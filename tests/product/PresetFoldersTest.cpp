#include "product/SordelinPlugin.h"

#include "support/PresetFiles.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// A preset of the first so many values, all of them 0.
std::string zeros(int count)
{
    std::string bytes("MStd\5\0\0\0", 8);
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(count >> shift & 0xFF);
    return bytes.append(static_cast<std::size_t>(count) * 4, '\0');
}

/// The home of a user with a preset of their own, so that nothing is filled in.
struct Home {
    explicit Home(const std::string& content = zeros(1))
    {
        put("Documents/Morvelane/Presets/Sordelin 2/Own.mvp", content);
    }
    void put(const std::string& path, const std::string& content) const
    {
        putPreset(home.folder, path, content);
    }
    void choose(const char* version, const std::string& folder) const
    {
        put(joined("config/Morvelane/Sordelin/", version, ".toml"),
            joined("PresetFolder = \"", folder, "\"\n"));
    }
    std::string path(const char* name) const { return (home.folder / name).string(); }

    const TemporaryHome home;
};

}  // namespace

TEST(PresetFolders, LieAmongTheUsersDocuments)
{
    const Home home;
    SordelinPlugin plugin;
    EXPECT_EQ(plugin.presetManager().path(), home.path("Documents/Morvelane/Presets/Sordelin 2/"));
    EXPECT_EQ(namesOf(plugin.presetManager()), "Own");
    const char* folders[] = {"Delays", "Filters", "XLFO", "EG", "EF", "MIDI"};
    const char* extensions[] = {".delays", ".filters", ".xlfo", ".eg", ".ef", ".midi"};
    for (int group = 0; group < 6; ++group) {
        EXPECT_EQ(plugin.presetManager(group).extension(), extensions[group]);
        EXPECT_EQ(plugin.presetManager(group).path(),
                  (home.home.productData() / "Component Presets" / folders[group] / "").string());
    }
}

TEST(PresetFolders, AreTheUsersChoiceWhereThatIsAFolder)
{
    const Home home;
    home.put("chosen/c.mvp", "x");
    home.choose("2.0", home.path("chosen"));
    EXPECT_EQ(SordelinPlugin().presetManager().path(), home.path("chosen/"));
    home.choose("2.0", home.path("missing"));
    EXPECT_EQ(namesOf(SordelinPlugin().presetManager()), "Own");
}

TEST(PresetFolders, KeepThePresetsOfTheVersionBefore)
{
    const Home home;
    home.put("old/o.mvp", "x");
    home.choose("1.0", home.path("old"));
    SordelinPlugin plugin;
    ASSERT_EQ(plugin.presetManager().extraFolders().size(), 1u);
    EXPECT_EQ(plugin.presetManager().extraFolders()[0]->name(), "V1 Preset Folder");
    EXPECT_EQ(plugin.presetManager().findByName("o", PresetManager::Scope::Everything)->label, "(0/1) o");
}

TEST(PresetFolders, AreSharedByAllInstances)
{
    const Home home;
    SordelinPlugin first;
    SordelinPlugin second;
    EXPECT_EQ(&first.presetManager(), &second.presetManager());
    EXPECT_EQ(&first.presetManager(5), &second.presetManager(5));
    PresetInfo saved(home.path("Documents/Morvelane/Presets/Sordelin 2/Another.mvp"));
    EXPECT_TRUE(second.savePreset(saved).succeeded());
    EXPECT_EQ(namesOf(first.presetManager()), "Another Own");
    first.setPresetName("Own");
    EXPECT_EQ(first.presetState.path.value(), home.path("Documents/Morvelane/Presets/Sordelin 2/Own.mvp"));
    first.setPresetName("None");
    EXPECT_EQ(first.presetState.path.value(), "");
}

TEST(PresetFolders, AnswerMidiProgramChanges)
{
    const Home home;
    home.put("Documents/Morvelane/Presets/Sordelin 2/In/First.mvp", zeros(705));
    SordelinPlugin plugin;
    for (const auto& [number, name] :
         {std::pair(0, "First"), {1, "Own"}, {2, "Own"}, {-1, "Own"}, {0, "First"}}) {
        plugin.selectPreset(number);
        EXPECT_EQ(plugin.presetState.name.value(), name) << number;
    }
}

TEST(PresetFolders, ANewInstanceStartsWithTheUsersDefault)
{
    const Home home;
    home.put("Documents/Morvelane/Presets/Sordelin 2/In/Default Setting.mvp", zeros(705));
    SordelinPlugin plugin;
    EXPECT_EQ(plugin.presetState.name.value(), "Default Setting");
    EXPECT_FALSE(plugin.presetState.modified.value());
    EXPECT_EQ(plugin.parameter(0).currentValue(), 0.0f);
    EXPECT_EQ(plugin.parameter(704).currentValue(), 0.0f);  // the default preset alone may set it
}

TEST(PresetFolders, StayEmptyWithoutFactoryContent)
{
    const TemporaryHome home;  // these tests carry none
    SordelinPlugin plugin;
    EXPECT_TRUE(plugin.presetManager().isEmpty());
    EXPECT_FALSE(plugin.unpackFactoryContent(FactoryArchive::Existing::Replace));
    EXPECT_EQ(plugin.parameter(0).currentValue(), plugin.parameter(0).defaultValue());
}
