#include "SordelinPresetFixture.h"

#include "presets/CollectionPresetLoader.h"
#include "presets/CustomPresetLoader.h"
#include "presets/PresetFile.h"

#include "support/QuietAdapter.h"

#include <sstream>

namespace {

struct Recorder : QuietAdapter {
    explicit Recorder(SordelinPlugin& observed) : plugin(observed) { plugin.setAdapter(this); }
    void parameterChanged(int index) override
    {
        forwarded.push_back(index);
        frozen = plugin.delayFreeze.currentValue();
        loaded = plugin.delays[0].offset.currentValue();
    }
    SordelinPlugin& plugin;
    std::vector<int> forwarded;
    float frozen = -1.0f;
    float loaded = -1.0f;
};

using SordelinPluginPresetsTest = SordelinPresetFixture;

TEST_F(SordelinPluginPresetsTest, EveryValueSurvivesBitByBit)
{
    scatter(1);
    const std::vector<float> before = values();
    ASSERT_EQ(before.size(), 705u);
    const PresetInfo preset(home.folder / "All.mvp");
    ASSERT_TRUE(plugin.savePreset(preset).succeeded());
    EXPECT_EQ(home.folder.read("All.mvp"), presetBytes("MStd", 5, before));
    EXPECT_EQ(home.folder.read("All.mvp").size(), 2832u);
    std::ostringstream text;
    ASSERT_TRUE(PresetWriter(plugin.storedParameters, &plugin).writeText(text, 5));

    scatter(2);
    std::vector<float> expected = before;
    for (const int kept : {freeze, dry})
        expected[static_cast<std::size_t>(kept)] = value(kept);
    ASSERT_TRUE(plugin.loadPreset(preset).succeeded());
    EXPECT_EQ(values(), expected);

    scatter(3);
    for (const int kept : {freeze, dry})
        expected[static_cast<std::size_t>(kept)] = value(kept);
    ASSERT_TRUE(load(text.str()).succeeded());
    EXPECT_EQ(values(), expected);
}

TEST_F(SordelinPluginPresetsTest, AnyTruncationFails)
{
    scatter(1);
    const std::string whole = presetBytes("MStd", 5, values());
    for (std::size_t length = 0; length < whole.size(); length += length < 64 ? 1 : 37) {
        const std::string message = load(whole.substr(0, length)).message();
        EXPECT_EQ(message,
                  length < 8 ? "Incorrect file permissions or corrupt preset file." : "Invalid file format.")
            << length;
    }
}

TEST_F(SordelinPluginPresetsTest, WhatNeitherLoaderTakesIsExplained)
{
    const std::vector<float> before = values();
    struct Row {
        const char* signature;
        int version;
        const char* message;
    };
    const Row rows[] = {
        {"MStd", 6, "Preset version not supported: 6"},
        {"MStd", 2, "Preset version not supported: 2"},
        {"MStd", 1, "Preset version not supported: 1"},  // a section's
        {"MStd", 0, "Preset version not supported: 0"},
        {"MStd", -1, "Preset version not supported: -1"},
        {"MDly", 2, "Unknown preset signature (likely intended for another Morvelane plug-in): MDly"},
        {"MSlg", 1, "Unknown preset signature (likely intended for another Morvelane plug-in): MSlg"},
        {"MDly", 3, "Unknown preset signature (likely intended for another Morvelane plug-in): MDly"},
        {"Mstd", 5, "Unknown preset signature (likely intended for another Morvelane plug-in): Mstd"},
    };
    for (const auto& [signature, version, message] : rows) {
        EXPECT_EQ(load(presetBytes(signature, version, {0.9f, 0.9f})).message(), message);
        EXPECT_EQ(values(), before);
    }
    EXPECT_EQ(
        load("[Preset]\nSignature=MStd\nVersion=5\n[Parameters]\nDelay 1 Tune=1\nDelay 1 Pan=1\n").message(),
        "Unknown parameter: Delay 1 Tune");
    EXPECT_EQ(value(6), 1.0f);
}

TEST_F(SordelinPluginPresetsTest, AFrozenDelayStaysFrozenAndNoneIsFrozen)
{
    const std::pair<const char*, int> kinds[] = {
        {"MDly", 1}, {"MSlg", 2}, {"MStd", 3}, {"MStd", 4}, {"MStd", 5}};
    for (const auto& [signature, version] : kinds)
        for (const float state : {0.0f, 1.0f})
            for (const float stored : {0.0f, 1.0f}) {
                set(freeze, state);
                set(dry, state);
                set(1, -1.0f);
                Recorder recorder(plugin);
                std::vector<float> fields(705, stored);
                ASSERT_TRUE(load(presetBytes(signature, version, fields)).succeeded());
                plugin.setAdapter(nullptr);
                EXPECT_EQ(value(freeze), state) << version;
                EXPECT_EQ(value(dry), state) << version;
                // The other half hears once, of all, when all is in place.
                EXPECT_EQ(recorder.forwarded, std::vector<int>{GenericPlugin::WithSoftReset});
                EXPECT_EQ(recorder.frozen, state);
                EXPECT_EQ(recorder.loaded, stored);
            }
}

TEST_F(SordelinPluginPresetsTest, TheDefaultPresetAloneSetsTheDrySignal)
{
    std::vector<float> fields(705, 1.0f);
    fields[dry] = 0.0f;
    home.folder.write("Default Setting.mvp", presetBytes("MStd", 5, fields));
    const PresetInfo preset(home.folder / "Default Setting.mvp");
    EXPECT_TRUE(plugin.loadPreset(preset).succeeded());
    EXPECT_EQ(value(dry), 1.0f);
    EXPECT_TRUE(plugin.loadDefaultPreset(&preset).succeeded());
    EXPECT_EQ(value(dry), 0.0f);
    EXPECT_EQ(value(freeze), 0.0f);
}

// Presets of sections.

TEST_F(SordelinPluginPresetsTest, SectionsHoldWhatTheirFilesHold)
{
    struct Row {
        const char* extension;
        const char* folder;
        int sections;
        int count;
        int first;  // the indices of the first section
        int last;
    };
    const Row rows[] = {{".delays", "Delays", 1, 17, 0, 16}, {".filters", "Filters", 1, 15, 18, 32},
                        {".xlfo", "XLFO", 6, 73, 49, 121},   {".eg", "EG", 6, 8, 488, 495},
                        {".ef", "EF", 4, 3, 537, 539},       {".midi", "MIDI", 10, 3, 550, 552}};
    const ComponentPresets& presets = plugin.componentPresets;
    ASSERT_EQ(presets.groupCount(), 6);
    for (int group = 0; group < 6; ++group) {
        const Row& row = rows[group];
        EXPECT_EQ(presets.extension(group), row.extension);
        EXPECT_EQ(presets.folder(group), row.folder);
        EXPECT_EQ(presets.sectionCount(group), row.sections);
        for (int section = 0; section < row.sections; ++section) {
            const PresetParameterCollection& collection = presets.section(group, section);
            ASSERT_EQ(collection.count(), row.count);
            for (int i = 0; i < row.count; ++i)
                EXPECT_EQ(collection.at(i).index(), row.first + i + section * row.count);
        }
        EXPECT_EQ(row.last - row.first + 1, row.count);
        EXPECT_TRUE(plugin.componentPresetFolder(group).ends_with(
            std::string("/Morvelane/Sordelin 2/Component Presets/").append(row.folder).append("/")));
    }
}

TEST_F(SordelinPluginPresetsTest, AnXlfoFitsAllXlfos)
{
    const int third = 49 + 2 * 73;
    const int fifth = 49 + 4 * 73;
    const auto valuesFrom = [this](int first) {
        const std::vector<float> all = values();
        return std::vector<float>(all.begin() + first, all.begin() + first + 73);
    };
    scatter(1);
    const std::vector<float> saved = valuesFrom(third);
    const PresetInfo preset(home.folder / "Wobble.xlfo");
    ASSERT_TRUE(plugin.saveComponentPreset(preset, 1, 2, 2).succeeded());
    EXPECT_EQ(home.folder.read("Wobble.xlfo"), presetBytes("MStd", 1, saved));

    scatter(2);
    std::vector<float> expected = values();
    std::copy(saved.begin(), saved.end(), expected.begin() + fifth);
    Recorder recorder(plugin);
    EXPECT_TRUE(plugin.loadComponentPreset(preset, 1, 2, 4).succeeded());
    plugin.setAdapter(nullptr);
    EXPECT_EQ(values(), expected);
    EXPECT_EQ(recorder.forwarded, std::vector<int>{GenericPlugin::WithoutReset});
    EXPECT_EQ(plugin.loadComponentPreset(preset, 2, 2, 4).message(), "Preset version not supported: 1");

    // A whole preset isn't one of a section, nor the other way round.
    home.folder.write("All.mvp", presetBytes("MStd", 5, expected));
    EXPECT_EQ(plugin.loadComponentPreset(PresetInfo(home.folder / "All.mvp"), 1, 2, 4).message(),
              "Preset version not supported: 5");
    EXPECT_EQ(plugin.loadPreset(preset).message(), "Preset version not supported: 1");
    EXPECT_EQ(values(), expected);
}

TEST_F(SordelinPluginPresetsTest, TextKeysFitEverySectionOfAKind)
{
    struct Row {
        int group;
        const char* keys[2];
    };
    for (const auto& [group, keys] :
         {Row{2, {"\nNum Active Steps=", "\nStep 16 Glide function="}}, Row{3, {"\nHold=", "\nRelease="}},
          Row{4, {"\nInput=", "\nAttack="}}, Row{5, {"\nInput=", "\nController Number="}}}) {
        const ComponentPresets& presets = plugin.componentPresets;
        const PresetParameterCollection& from = presets.section(group, 0);
        const PresetParameterCollection& to = presets.section(group, presets.sectionCount(group) - 1);
        scatter(3);
        std::vector<float> before;
        from.readValues(before);
        std::stringstream text;
        ASSERT_TRUE(PresetWriter(from, nullptr).writeText(text, 1));
        for (const char* key : keys)
            EXPECT_NE(text.str().find(key), std::string::npos) << text.str();
        scatter(4);
        ErrorResult result;
        CollectionPresetLoader loader(to);
        EXPECT_TRUE(loader.readPreset(result, text, 1)) << result.message();
        std::vector<float> after;
        to.readValues(after);
        EXPECT_EQ(after, before);
    }
}

}  // namespace

TEST(SordelinPlugin, GoesBackAndForthBetweenItsStates)
{
    SordelinPlugin plugin;
    Recorder recorder(plugin);
    plugin.undoHistory().initialise();
    plugin.compareStates().initialise();
    plugin.presetState.modified.assign(false);
    const auto change = [&](float offset) {
        plugin.delays[0].offset.setValue(offset, announceChange);
        plugin.undoHistory().pushState();
    };
    const auto offset = [&] { return plugin.delays[0].offset.currentValue(); };
    change(0.25f);
    plugin.compareStates().toggle();  // to B, which is as A was at first
    EXPECT_EQ(offset(), 0.0f);
    change(-0.5f);
    plugin.compareStates().toggle();
    EXPECT_EQ(offset(), 0.25f);
    recorder.forwarded.clear();
    for (const float expected : {-0.5f, 0.0f, 0.25f, 0.0f, 0.0f}) {
        plugin.undoHistory().undo();
        EXPECT_EQ(offset(), expected);
    }
    EXPECT_EQ(recorder.forwarded, std::vector<int>(4, GenericPlugin::WithSoftReset));
    EXPECT_FALSE(plugin.presetState.modified.value());
    for (const float expected : {0.25f, 0.0f, -0.5f, 0.25f, 0.25f}) {
        plugin.undoHistory().redo();
        EXPECT_EQ(offset(), expected);
    }
    EXPECT_TRUE(plugin.presetState.modified.value());
    EXPECT_EQ(plugin.compareStates().current(), 0);
}
