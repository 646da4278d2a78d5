#include "clap_host/ClapHostError.h"
#include "clap_host/ClapInstance.h"
#include "clap_host/PresetIndexer.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace {

namespace fs = std::filesystem;

constexpr const char* pluginId = "clap:com.Morvelane.preset-discovery.Sordelin.2";

void put(const fs::path& file, const std::string& content)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

/// A user's home and a module that looks for presets there.
struct Discovery {
    fs::path presets() const { return home.folder / "Documents/Morvelane/Presets/Sordelin 2"; }
    void choose(const std::string& folder) const
    {
        put(home.folder / "config/Morvelane/Sordelin/2.0.toml", "PresetFolder = \"" + folder + "\"\n");
    }

    const TemporaryHome home;
    const ClapModule module{SORDELIN_MODULE};
};

}  // namespace

TEST(PresetDiscovery, HasOneProviderByBothIds)
{
    const ClapModule module(SORDELIN_MODULE);
    const auto* factory = static_cast<const clap_preset_discovery_factory_t*>(
        module.findFactory("clap.preset-discovery-factory/2"));
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(module.findFactory("clap.preset-discovery-factory/draft-2"), factory);
    for (const char* id : {"clap.preset-discovery-factory/22", "clap.preset-discovery-factory",
                           "clap.preset-discovery-factory/3"})
        EXPECT_EQ(module.findFactory(id), nullptr) << id;
    EXPECT_EQ(factory->count(factory), 1u);
    EXPECT_EQ(factory->get_descriptor(factory, 1), nullptr);
    const auto* descriptor = factory->get_descriptor(factory, 0);
    ASSERT_NE(descriptor, nullptr);
    EXPECT_STREQ(descriptor->id, "com.Morvelane.preset-discovery.Sordelin.2");
    EXPECT_STREQ(descriptor->name, "Sordelin 2 Preset Indexer");
    EXPECT_STREQ(descriptor->vendor, "Morvelane");
    EXPECT_TRUE(descriptor->clap_version.major == 1 && descriptor->clap_version.minor == 2 &&
                descriptor->clap_version.revision == 5);
    PresetIndexer indexer(module);
    EXPECT_EQ(indexer.provider().desc, descriptor);
    EXPECT_EQ(indexer.provider().get_extension(&indexer.provider(), "anything"), nullptr);
}

TEST(PresetDiscovery, DeclaresTheUsersFolder)
{
    const Discovery discovery;
    const std::string chosen = (discovery.home.folder / "not there").string();
    for (const bool isChosen : {false, true}) {
        if (isChosen)
            discovery.choose(chosen);
        PresetIndexer indexer(discovery.module);
        ASSERT_TRUE(indexer.init());
        ASSERT_EQ(indexer.locations.size(), 1u);
        EXPECT_EQ(indexer.locations[0].name, "Sordelin Preset Folder");
        EXPECT_EQ(indexer.locations[0].path, isChosen ? chosen : (discovery.presets() / "").string());
        EXPECT_EQ(indexer.locations[0].kind, 0u);
        EXPECT_EQ(indexer.locations[0].flags, 3u);
        ASSERT_EQ(indexer.fileTypes.size(), 1u);
        EXPECT_EQ(indexer.fileTypes[0].name, "Morvelane Preset");
        EXPECT_EQ(indexer.fileTypes[0].description, "Preset for a Morvelane plugin");
        EXPECT_EQ(indexer.fileTypes[0].extension, "mvp");
        EXPECT_TRUE(indexer.faults.empty());
    }
    EXPECT_FALSE(fs::exists(discovery.presets()));  // nothing is written
}

TEST(PresetDiscovery, StopsWhereTheHostRefuses)
{
    const Discovery discovery;
    PresetIndexer noLocations(discovery.module);
    noLocations.acceptsLocations = false;
    EXPECT_FALSE(noLocations.init());
    EXPECT_TRUE(noLocations.fileTypes.empty());
    PresetIndexer noTypes(discovery.module);
    noTypes.acceptsFileTypes = false;
    EXPECT_FALSE(noTypes.init());
    put(discovery.presets() / "a.mvp", "x");
    PresetIndexer noPresets(discovery.module);
    ASSERT_TRUE(noPresets.init());
    noPresets.acceptsPresets = false;
    EXPECT_FALSE(noPresets.read((discovery.presets() / "a.mvp").string()));
}

TEST(PresetDiscovery, TellsWhatAFileSays)
{
    const Discovery discovery;
    const std::string header = "[Preset]\nSignature=MStd\nVersion=5\n";
    struct Row {
        const char* file;
        std::string content;
        std::vector<std::string> creators;
        const char* description;
        std::vector<std::string> features;
        bool isFavorite;
    };
    const Row rows[] = {
        {"_2 Dub/Deep. Echo.mvp",
         header + "Author=Ada\nDescription=Long\nTags=Dub,Long Echo,\n",
         {"Ada"},
         "Long",
         {"Dub", "Long Echo", ""},
         true},
        {"plain.mvp", std::string("MStd\5\0\0\0\0\0\0\0", 12), {}, "", {}, false},
        {"Case.mvp", header, {}, "", {}, false},
        {"junk.mvp", "", {}, "", {}, true},
    };
    put(discovery.presets() / "Favorites.txt", "# mine\n\n_2 Dub/Deep. Echo.mvp\ncase.mvp\njunk.mvp\n");
    for (const Row& row : rows)
        put(discovery.presets() / row.file, row.content);
    PresetIndexer indexer(discovery.module);
    ASSERT_TRUE(indexer.init());
    for (const auto& [file, content, creators, description, features, isFavorite] : rows) {
        const std::string path = (discovery.presets() / file).string();
        const auto presets = indexer.read(path);
        ASSERT_TRUE(presets && presets->size() == 1) << file;
        const PresetIndexer::Preset& preset = presets->front();
        EXPECT_EQ(preset.name, fs::path(file).stem().string());
        EXPECT_EQ(preset.loadKey, path);
        EXPECT_EQ(preset.creators, creators);
        EXPECT_EQ(preset.description, description);
        EXPECT_EQ(preset.flags, isFavorite ? std::optional(11u) : std::nullopt) << file;
        EXPECT_EQ(preset.plugins, std::vector<std::string>{pluginId});
        EXPECT_EQ(preset.features, features);
        EXPECT_EQ(preset.otherCalls, 0);
    }
    EXPECT_TRUE(indexer.faults.empty());
}

TEST(PresetDiscovery, KnowsNothingOfWhatIsNoFile)
{
    const Discovery discovery;
    put(discovery.presets() / "a.mvp", "x");
    PresetIndexer indexer(discovery.module);
    ASSERT_TRUE(indexer.init());
    EXPECT_FALSE(indexer.read(discovery.presets().string()));
    EXPECT_FALSE(indexer.read((discovery.presets() / "b.mvp").string()));
    EXPECT_FALSE(indexer.read(""));
    EXPECT_FALSE(
        indexer.read((discovery.presets() / "a.mvp").string(), CLAP_PRESET_DISCOVERY_LOCATION_PLUGIN));
}

TEST(PresetDiscovery, FindsWhatTheFirstInstanceUnpacks)
{
    const Discovery discovery;
    {
        const ClapInstance instance(discovery.module);
    }
    PresetIndexer indexer(discovery.module);
    ASSERT_TRUE(indexer.init());
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(indexer.locations.at(0).path)) {
        if (entry.path().extension() == ".mvp")
            names.insert(indexer.read(entry.path().string()).value().front().name);
    }
    EXPECT_TRUE(names.contains("Default Setting") && names.contains("Clean"));
    EXPECT_TRUE(fs::exists(discovery.home.productData() / "Component Presets/XLFO/Sine.xlfo"));

    // Neither a second instance nor a second start brings back what the user has thrown away.
    fs::remove(discovery.presets() / "Clean.mvp");
    {
        const ClapInstance instance(discovery.module);
    }
    EXPECT_FALSE(fs::exists(discovery.presets() / "Clean.mvp"));
}
