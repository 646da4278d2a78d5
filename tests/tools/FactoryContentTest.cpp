#include "audition/FactorySource.h"
#include "pack_factory/PresetText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

namespace {

namespace fs = std::filesystem;

const fs::path content = SORDELIN_FACTORY_CONTENT;
const fs::path sections = content / "ApplicationData/Component Presets";

std::string textOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string packed(const FactorySource& source)
{
    return packPreset(textOf(source.file), source.file.string());
}

std::map<std::string, int> countByFolder(const std::vector<FactorySource>& sources)
{
    std::map<std::string, int> counts;
    for (const FactorySource& source : sources)
        ++counts[source.folder];
    return counts;
}

}  // namespace

TEST(FactoryContent, HasEnoughPresetsOfEachKind)
{
    const auto whole = countByFolder(readFactorySources(content / "FactoryPresets"));
    int count = 0;
    for (const auto& [folder, presets] : whole) {
        EXPECT_TRUE(folder.empty() || presets >= 8) << folder;
        count += presets;
    }
    EXPECT_GE(count, 120);
    EXPECT_EQ(whole.at(""), 2);  // "Clean" and "Default Setting"

    const auto groups = countByFolder(readFactorySources(sections));
    EXPECT_EQ(groups.size(), 6u);
    for (const auto& [folder, presets] : groups)
        EXPECT_GE(presets, 12) << folder;
}

TEST(FactoryContent, DefaultSettingIsWhatIsDeclared)
{
    const std::string bare = packPreset("[Preset]\nSignature=MStd\nVersion=5\n", "bare.mvp");
    const std::string setting =
        packPreset(textOf(content / "FactoryPresets/Default Setting.mvp"), "Default Setting.mvp");
    // Signature, version, count and 705 values; what follows is the description.
    EXPECT_EQ(setting.substr(0, 2832), bare.substr(0, 2832));
}

TEST(FactoryContent, NoTwoPresetsShareANameOrAllValues)
{
    std::set<std::string> names;
    std::set<std::string> values;
    for (const FactorySource& source : readFactorySources(content / "FactoryPresets")) {
        EXPECT_TRUE(names.insert(source.name).second) << source.label();
        EXPECT_TRUE(values.insert(packed(source).substr(0, 2832)).second) << source.label();
    }
    std::set<std::string> ofSections;
    for (const FactorySource& source : readFactorySources(sections))
        EXPECT_TRUE(ofSections.insert(source.folder + packed(source)).second) << source.label();
}

TEST(FactoryContent, SaysWhatEachPresetIsFor)
{
    for (const FactorySource& source : readFactorySources(content / "FactoryPresets")) {
        EXPECT_FALSE(source.description.empty()) << source.label();
        EXPECT_TRUE(source.folder.empty() || !source.tags.empty()) << source.label();
        EXPECT_EQ(source.author, "Sordelin") << source.label();
    }
}
