#include "core/GenericPlugin.h"
#include "foundation/BinaryDataWriter.h"
#include "parameters/FloatPluginParameter.h"
#include "support/PresetFixture.h"
#include "support/QuietAdapter.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Values = std::vector<float>;

/// Two parameters that presets hold, and between them two that they don't.
struct TestPlugin : GenericPlugin {
    TestPlugin()
    {
        code = "Test";
        versionedName = "Sordelin 2";
        componentPresets.addGroup(".part", "Parts");
        for (FloatPluginParameter* parameter : {&first, &second})
            componentPresets.addSection(0, code).add(*parameter);
        joinProcess();
    }
    bool isStored(const AbstractPluginParameter& parameter) const override
    {
        return parameter.displayName().find("View") == std::string::npos;
    }
    int presetFormatVersion() const override { return 5; }
    std::string findPresetPath(std::string_view presetName) override
    {
        return presetName == "Known" ? "/presets/Known.mvp" : "";
    }
    void presetWasSaved(const PresetInfo& preset) override { saved.push_back(preset.path); }
    void loadPresetFile(ErrorResult& result, const PresetInfo& preset) override
    {
        GenericPlugin::loadPresetFile(result, preset);
        if (resetsViews)  // as a loader may do that sets everything to its default
            view.setValue(0.0f, announceChange);
    }
    Values values() const
    {
        return {first.currentValue(), view.currentValue(), otherView.currentValue(), second.currentValue()};
    }
    void set(const Values& values)
    {
        FloatPluginParameter* const all[] = {&first, &view, &otherView, &second};
        for (std::size_t i = 0; i < values.size(); ++i)
            all[i]->setValue(values[i], announceChange);
    }

    FloatPluginParameter first{this, "Part 1 Level"};
    FloatPluginParameter view{this, "View Size"};
    FloatPluginParameter otherView{this, "View Place"};
    FloatPluginParameter second{this, "Part 2 Level"};
    std::vector<std::string> saved;
    bool resetsViews = false;
};

struct Recorder : QuietAdapter, GenericPlugin::Listener {
    void parameterChanged(int index) override { forwarded.push_back(index); }
    void stateChanged(GenericPlugin::StateChange change) override
    {
        log += change == GenericPlugin::StateChange::Preset ? "host " : "host1 ";
    }
    void message(int code, int) noexcept override
    {
        if (code != ParameterChanged)
            log.append(std::to_string(code)).append(" ");
    }
    std::string log;
    std::vector<int> forwarded;
};

struct GenericPluginPresetsTest : testing::Test {
    GenericPluginPresetsTest()
    {
        plugin.setAdapter(&recorder);
        plugin.setListener(&recorder);
    }
    PresetInfo file(const char* name, const std::string& bytes) const
    {
        home.folder.write(name, bytes);
        return at(name);
    }
    PresetInfo at(const char* name) const { return PresetInfo(home.folder / name); }
    std::string defaultsFile() const
    {
        return home.folder.read("data/Morvelane/Sordelin 2/InterfaceDefaults.mvd");
    }

    TemporaryHome home;
    TestPlugin plugin;
    Recorder recorder;
};

TEST_F(GenericPluginPresetsTest, LoadsInOneBatchWithASoftReset)
{
    plugin.set({0.1f, 0.2f, 0.3f, 0.4f});
    recorder = Recorder();
    plugin.resetsViews = true;
    const PresetInfo preset = file("Loud One.mvp", presetBytes("Test", 5, {0.5f, 0.6f}));
    const ErrorResult result = plugin.loadPreset(preset);
    EXPECT_TRUE(result.succeeded()) << result.message();
    EXPECT_EQ(plugin.values(), (Values{0.5f, 0.2f, 0.3f, 0.6f}));
    EXPECT_EQ(recorder.forwarded, std::vector<int>{GenericPlugin::WithSoftReset});
    EXPECT_EQ(plugin.presetState.name.value(), "Loud One");
    EXPECT_EQ(plugin.presetState.path.value(), preset.path);
    EXPECT_FALSE(plugin.presetState.modified.value());
    EXPECT_EQ(recorder.log, "-1032 host -1026 ");
}

TEST_F(GenericPluginPresetsTest, AFailureLeavesTheName)
{
    ASSERT_TRUE(plugin.loadPreset(file("a.mvp", presetBytes("Test", 5, {0.5f, 0.6f}))).succeeded());
    recorder = Recorder();
    const ErrorResult foreign = plugin.loadPreset(file("b.mvp", presetBytes("Tess", 5, {0.7f, 0.8f})));
    EXPECT_EQ(foreign.message(),
              "Unknown preset signature (likely intended for another Morvelane plug-in): Tess");
    EXPECT_TRUE(recorder.forwarded.empty());
    EXPECT_FALSE(plugin.presetState.modified.value());
    const ErrorResult cut =
        plugin.loadPreset(file("b.mvp", presetBytes("Test", 5, {0.7f, 0.8f}).substr(0, 16)));
    EXPECT_EQ(cut.message(), "Invalid file format.");
    EXPECT_EQ(plugin.values(), (Values{0.7f, 0.0f, 0.0f, 0.0f}));
    EXPECT_EQ(plugin.presetState.name.value(), "a");
    EXPECT_TRUE(plugin.presetState.modified.value());
    EXPECT_EQ(plugin.loadPreset(at("none.mvp")).message(),
              "Incorrect file permissions or corrupt preset file.");
}

TEST_F(GenericPluginPresetsTest, EveryChangeModifiesThePresetOnce)
{
    const std::uint32_t before = plugin.modificationCount();
    plugin.first.setValue(0.5f, noEcho);
    plugin.first.setValue(0.6f, announceChange);
    plugin.first.setValue(0.6f, announceChange);
    EXPECT_TRUE(plugin.presetState.modified.value());
    EXPECT_EQ(plugin.modificationCount(), before + 2);
    EXPECT_EQ(recorder.log, "-1026 ");
}

TEST_F(GenericPluginPresetsTest, SavesWhatPresetsHold)
{
    plugin.set({0.1f, 0.2f, 0.3f, 0.4f});
    recorder = Recorder();
    const PresetInfo preset = at("Mine.mvp");
    ASSERT_TRUE(plugin.savePreset(preset).succeeded());
    EXPECT_EQ(home.folder.read("Mine.mvp"), presetBytes("Test", 5, {0.1f, 0.4f}));
    EXPECT_EQ(plugin.saved, std::vector<std::string>{preset.path});
    EXPECT_EQ(plugin.presetState.name.value(), "Mine");
    EXPECT_EQ(plugin.presetState.path.value(), preset.path);
    EXPECT_FALSE(plugin.presetState.modified.value());
    EXPECT_EQ(recorder.log, "host -1026 ");

    plugin.first.setValue(0.9f, announceChange);
    EXPECT_FALSE(plugin.savePreset(at("no folder/Mine.mvp")).succeeded());
    EXPECT_EQ(plugin.presetState.path.value(), preset.path);
    EXPECT_TRUE(plugin.presetState.modified.value());
    EXPECT_EQ(plugin.saved.size(), 1u);
}

TEST_F(GenericPluginPresetsTest, SavesAsTextWhereTheProductDoes)
{
    plugin.flags |= GenericPluginInfo::WritesTextPresets;
    plugin.set({0.5f, 0.2f, 0.3f, 0.25f});
    plugin.setCustomValues({{"AUTHOR", "me"}});
    ASSERT_TRUE(plugin.savePreset(at("a.mvp")).succeeded());
    EXPECT_EQ(home.folder.read("a.mvp"), "[Preset]\nSignature=Test\nVersion=5\nAuthor=me\n\n"
                                         "[Parameters]\nPart 1 Level=0.5\nPart 2 Level=0.25\n");
    plugin.set({0.0f, 0.0f, 0.0f, 0.0f});
    plugin.setCustomValues({});
    EXPECT_TRUE(plugin.loadPreset(at("a.mvp")).succeeded());
    EXPECT_EQ(plugin.values(), (Values{0.5f, 0.0f, 0.0f, 0.25f}));
    EXPECT_EQ(plugin.customValues(), (CustomValues{{"AUTHOR", "me"}}));
}

TEST_F(GenericPluginPresetsTest, TakesANameAndFindsItsFile)
{
    plugin.setPresetName("Known");
    EXPECT_EQ(plugin.presetState.path.value(), "/presets/Known.mvp");
    plugin.setPresetName("Known and more", 5);  // no change
    EXPECT_EQ(plugin.presetState.path.value(), "/presets/Known.mvp");
    plugin.setPresetName("Other", GenericPlugin::WholeNameForHost);
    EXPECT_EQ(plugin.presetState.name.value(), "Other");
    EXPECT_EQ(plugin.presetState.path.value(), "");
    EXPECT_EQ(recorder.log, "-1026 -1026 host -1026 ");
}

TEST_F(GenericPluginPresetsTest, KeepsWhatPresetsDoNotHoldForTheNextInstance)
{
    EXPECT_EQ(plugin.defaultPresetName(), "Default Setting");
    plugin.set({0.1f, 0.2f, 0.3f, 0.4f});
    EXPECT_TRUE(plugin.saveInterfaceDefaults(plugin.first).succeeded());
    EXPECT_EQ(defaultsFile(), "");  // none of them
    EXPECT_TRUE(plugin.saveInterfaceDefaults(plugin.view).succeeded());
    EXPECT_EQ(defaultsFile(), presetBytes("Test", 5, {0.2f, 0.3f}));
    plugin.set({0.1f, 0.6f, 0.7f, 0.4f});
    EXPECT_TRUE(plugin.saveInterfaceDefaults(plugin.otherView).succeeded());
    EXPECT_EQ(defaultsFile(), presetBytes("Test", 5, {0.2f, 0.7f}));
    plugin.set({0.1f, 0.2f, 0.9f, 0.4f});
    EXPECT_TRUE(plugin.saveInterfaceDefaults(plugin.view).succeeded());  // that one alone
    EXPECT_EQ(defaultsFile(), presetBytes("Test", 5, {0.2f, 0.7f}));

    TestPlugin next;
    EXPECT_TRUE(next.loadDefaultPreset(nullptr).succeeded());
    EXPECT_EQ(next.values(), (Values{0.0f, 0.2f, 0.7f, 0.0f}));
    const PresetInfo preset = file("Default Setting.mvp", presetBytes("Test", 5, {0.8f, 0.9f}));
    plugin.set({0.0f, 0.0f, 0.0f, 0.0f});
    EXPECT_TRUE(plugin.loadDefaultPreset(&preset).succeeded());
    EXPECT_EQ(plugin.values(), (Values{0.8f, 0.2f, 0.7f, 0.9f}));

    // What can't be read is replaced when one is kept.
    std::ofstream(home.productData() / "InterfaceDefaults.mvd") << "damaged";
    plugin.set({0.0f, 0.5f, 0.5f, 0.0f});
    plugin.loadInterfaceDefaults();
    EXPECT_EQ(plugin.values(), (Values{0.0f, 0.5f, 0.5f, 0.0f}));
    EXPECT_TRUE(plugin.saveInterfaceDefaults(plugin.otherView).succeeded());
    EXPECT_EQ(defaultsFile(), presetBytes("Test", 5, {0.5f, 0.5f}));
}

TEST_F(GenericPluginPresetsTest, KnowsItsOwnState)
{
    plugin.set({0.1f, 0.2f, 0.3f, 0.4f});
    plugin.setPresetName("Known");
    plugin.restoreInstanceName(false, "Left");
    const std::string parameters =
        "MVBS" + word(1u) + word(4u) + word(0.1f) + word(0.2f) + word(0.3f) + word(0.4f);
    const auto extended = [](std::uint32_t version, const char* name, std::uint32_t autoName,
                             const char* instance, std::uint32_t modified) {
        return "Test" + word(version) + counted(name) + word(7u) + word(autoName) + counted(instance) +
               word(modified);
    };
    const std::string same = parameters + extended(3, "Known", 0, "Left", 1);
    const auto equals = [this](const std::string& bytes) {
        std::istringstream stream(bytes);
        return plugin.presetEqualsState(stream);
    };
    std::ostringstream written;
    BinaryDataWriter writer(written);
    plugin.writeParameterState(writer);
    EXPECT_EQ(written.str(), parameters);

    EXPECT_TRUE(equals(same));
    EXPECT_TRUE(equals(parameters + extended(1, "Known", 0, "Left", 0)));  // had no such flag
    EXPECT_FALSE(equals(parameters + extended(2, "Known", 0, "Left", 0)));
    EXPECT_FALSE(equals(parameters + extended(3, "Knows", 0, "Left", 1)));
    EXPECT_FALSE(equals(parameters + extended(3, "Known", 1, "Left", 1)));
    EXPECT_FALSE(equals(parameters + extended(3, "Known", 0, "Right", 1)));
    for (std::size_t length = 0; length < same.size(); ++length)
        EXPECT_FALSE(equals(same.substr(0, length))) << length;
    std::string other = same;
    other[12] ^= 1;
    EXPECT_FALSE(equals(other));
    plugin.restoreInstanceName(true, "Left");
    EXPECT_TRUE(equals(parameters + extended(3, "Known", 1, "Right", 1)));
}

TEST_F(GenericPluginPresetsTest, KeepsPresetsOfSections)
{
    plugin.set({0.1f, 0.2f, 0.3f, 0.4f});
    EXPECT_EQ(plugin.loadDefaultComponentPreset(0, 0).message(), "Default component preset not found.");
    EXPECT_EQ(plugin.loadDefaultComponentPreset(0, 0).code(), -1);
    ASSERT_TRUE(plugin.saveDefaultComponentPreset(0, 1).succeeded());
    EXPECT_EQ(home.folder.read("data/Morvelane/Sordelin 2/Component Presets/Parts/Default.part"),
              presetBytes("Test", 1, {0.4f}));
    plugin.setPresetName("Known");
    recorder = Recorder();
    EXPECT_TRUE(plugin.loadDefaultComponentPreset(0, 0).succeeded());
    EXPECT_EQ(plugin.values(), (Values{0.4f, 0.2f, 0.3f, 0.4f}));
    EXPECT_EQ(plugin.presetState.name.value(), "Known");
    EXPECT_EQ(recorder.forwarded, std::vector<int>{GenericPlugin::WithoutReset});
    EXPECT_EQ(recorder.log, "");

    plugin.second.setValue(0.6f, announceChange);
    ASSERT_TRUE(plugin.saveDefaultComponentPreset(0, 1).succeeded());  // replaces it
    EXPECT_TRUE(plugin.loadDefaultComponentPreset(0, 0).succeeded());
    EXPECT_EQ(plugin.first.currentValue(), 0.6f);
    EXPECT_EQ(plugin.loadComponentPreset(file("a.part", presetBytes("Test", 2, {0.1f})), 1, 0, 0).message(),
              "Preset version not supported: 2");
    EXPECT_FALSE(plugin.saveComponentPreset(at("no folder/a.part"), 1, 0, 0).succeeded());
}

}  // namespace
