#include "presets/CustomPresetLoader.h"
#include "support/PresetFixture.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace {

using Values = std::vector<float>;

/// With maps that the program doesn't carry.
struct MapLoader : CustomPresetLoader {
    MapLoader(PresetFixture& fixture) : CustomPresetLoader(fixture.collection, fixture.plugin)
    {
        currentVersion = 5;
    }
    std::unique_ptr<std::istream> openMap(const std::string& name) const override
    {
        const auto found = maps.find(name);
        return found == maps.end() ? nullptr : std::make_unique<std::istringstream>(found->second);
    }
    std::map<std::string, std::string> maps;
};

std::string mapBytes(int current, int values, const std::vector<int>& indices)
{
    std::string bytes =
        "PMap" + word(static_cast<std::uint32_t>(current)) + word(static_cast<std::uint32_t>(values));
    for (const int index : indices)
        bytes += word(static_cast<std::uint32_t>(index));
    return bytes;
}

struct CustomPresetLoaderTest : testing::Test, PresetFixture {
    std::string load(const std::string& bytes)
    {
        set({9.0f, 8.0f, 7.0f});
        std::istringstream stream(bytes);
        ErrorResult result;
        loader.readPreset(result, stream);
        return result.message();
    }
    MapLoader loader{*this};
};

TEST_F(CustomPresetLoaderTest, ReadsAnOlderLayoutByItsMap)
{
    // Then: Gamma, something that is gone, Alpha. Beta came later.
    loader.maps["PresetMap_Test_3.mvpresetmap"] = mapBytes(3, 3, {2, -1, 0, 1});
    EXPECT_EQ(load(presetBytes("Test", 3, {4.0f, 5.0f, 6.0f})), "");
    EXPECT_EQ(values(), (Values{6.0f, 2.0f, 4.0f}));
    EXPECT_EQ(load(presetBytes("Test", 3, {4.0f})), "");
    EXPECT_EQ(values(), (Values{1.0f, 2.0f, 4.0f}));
    // Text goes by keys whatever the layout is.
    EXPECT_EQ(load("[Preset]\nSignature=Test\nVersion=3\n[Parameters]\nAlpha=-1\n"), "");
    EXPECT_EQ(values(), (Values{-1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(load(presetBytes("Test", 5, {4.0f, 5.0f, 6.0f})), "");
    EXPECT_EQ(values(), (Values{4.0f, 5.0f, 6.0f}));
    EXPECT_EQ(load(presetBytes("Test", 4, {4.0f})), "Preset version not supported: 4");
    EXPECT_EQ(values(), (Values{9.0f, 8.0f, 7.0f}));
}

TEST_F(CustomPresetLoaderTest, RefusesADamagedMap)
{
    const std::string good = mapBytes(3, 2, {2, 0, 1});
    for (const std::string& map :
         {std::string(), "PMop" + good.substr(4), mapBytes(4, 2, {2, 0, 1}), mapBytes(3, 0, {2, 0, 1}),
          mapBytes(3, -1, {2, 0, 1}), mapBytes(3, 0x7FFFFFFF, {2, 0, 1}), mapBytes(3, 2, {2, 0}),
          mapBytes(3, 2, {2, 0, 0}), mapBytes(3, 2, {2, 3, 1}), mapBytes(3, 2, {2, -2, 1}),
          mapBytes(3, 2, {2, 0, -1}), good.substr(0, good.size() - 4)}) {
        loader.maps["PresetMap_Test_3.mvpresetmap"] = map;
        EXPECT_EQ(load(presetBytes("Test", 3, {4.0f})), "Preset version not supported: 3");
        EXPECT_EQ(values(), (Values{9.0f, 8.0f, 7.0f}));
    }
    loader.maps["PresetMap_Test_3.mvpresetmap"] = good;
    EXPECT_EQ(load(presetBytes("Test", 3, {4.0f, 5.0f})), "");
    EXPECT_EQ(values(), (Values{5.0f, 2.0f, 4.0f}));
}

TEST_F(CustomPresetLoaderTest, TakesFurtherSignaturesInTheirVersions)
{
    loader.aliases = {{"Tesd", 2}};
    EXPECT_EQ(load(presetBytes("Tesd", 2, {4.0f, 5.0f, 6.0f})), "");
    EXPECT_EQ(values(), (Values{4.0f, 5.0f, 6.0f}));
    EXPECT_EQ(load(presetBytes("Tesd", 3, {})),
              "Unknown preset signature (likely intended for another Morvelane plug-in): Tesd");
    EXPECT_EQ(load(presetBytes("Test", 2, {})), "Preset version not supported: 2");
}

TEST_F(CustomPresetLoaderTest, WithoutAVersionOfItsOwnTakesAll)
{
    loader.currentVersion = -1;
    for (const int version : {1, 7, 0x8000}) {
        EXPECT_EQ(load(presetBytes("Test", version, {4.0f, 5.0f, 6.0f})), "");
        EXPECT_EQ(values(), (Values{4.0f, 5.0f, 6.0f}));
    }
}

TEST_F(CustomPresetLoaderTest, AKeptMapHasOneVersion)
{
    loader.maps["PresetMap_Test_3.mvpresetmap"] = mapBytes(3, 3, {2, 1, 0});
    loader.keepValueMap();
    EXPECT_EQ(load(presetBytes("Test", 3, {})), "Preset version not supported: 3");
    EXPECT_EQ(load(presetBytes("Test", 5, {4.0f, 5.0f, 6.0f})), "");
    EXPECT_EQ(values(), (Values{4.0f, 5.0f, 6.0f}));
}

}  // namespace
