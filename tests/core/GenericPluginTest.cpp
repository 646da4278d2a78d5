#include "core/GenericPlugin.h"
#include "parameters/FloatPluginParameter.h"
#include "support/ControllerMapFile.h"
#include "support/QuietAdapter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

struct TestPlugin : GenericPlugin {
    TestPlugin()
    {
        GenericPluginInfo::name = "Sordelin";
        versionedName = "Sordelin 2";
        code = "MStd";
        joinProcess();
    }
    ~TestPlugin() override { leaveProcess(); }
    VersionInfo version() const override { return {2, 4, 1}; }
    bool canResizeInterface() const override { return true; }
    int interfaceMinimumWidth() const override { return 300; }
    void selectPreset(int number) override { presets.push_back(number); }
    using GenericPlugin::presetRoot;

    std::vector<int> presets;
    FloatPluginParameter first{this, "First"};
    FloatPluginParameter second{this, "Second"};
};

struct Recorder : QuietAdapter, GenericPlugin::Listener {
    void latencyChanged() override { ++latencyChanges; }
    void parameterChanged(int index) override { forwarded.push_back(index); }
    void controllerMapChanged() override { ++mapChanges; }
    void stateChanged(GenericPlugin::StateChange change) override { stateChanges.push_back(change); }
    void message(int code, int argument) noexcept override
    {
        if (code == ParameterChanged)
            told.push_back(argument);
        mapMessages += code == ControllerMapChanged;
        renames += code == InstanceRenamed;
    }
    int mapChanges = 0;
    int mapMessages = 0;
    int latencyChanges = 0;
    int renames = 0;
    std::vector<GenericPlugin::StateChange> stateChanges;
    std::vector<int> forwarded;
    std::vector<int> told;
};

struct PluginFixture : testing::Test {
    PluginFixture()
    {
        plugin.setAdapter(&recorder);
        plugin.setListener(&recorder);
    }
    TestPlugin plugin;
    Recorder recorder;
    using Indices = std::vector<int>;
};

}  // namespace

TEST_F(PluginFixture, ForwardsAUsersChangeAndNotTheHostsOwn)
{
    plugin.first.setValue(0.5f, announceChange);
    plugin.second.setValue(0.5f, noEcho);
    EXPECT_EQ(recorder.forwarded, Indices{0});
    EXPECT_EQ(recorder.told, (Indices{0, 1}));
}

TEST_F(PluginFixture, MakesOneReportOfNestedBatches)
{
    plugin.beginParameterBatch();
    plugin.first.setValue(0.5f, announceChange);
    plugin.beginParameterBatch();
    plugin.second.setValue(0.5f, noEcho);
    plugin.requestHardReset();
    plugin.requestSoftReset();  // the harder one stays
    plugin.endParameterBatch();
    EXPECT_TRUE(recorder.forwarded.empty());
    plugin.endParameterBatch();
    EXPECT_EQ(recorder.forwarded, Indices{GenericPlugin::WithHardReset});
    EXPECT_EQ(recorder.told, Indices{-1});
}

TEST_F(PluginFixture, TellsTheHostNothingOfABatchThatItMadeItself)
{
    plugin.beginParameterBatch();
    plugin.first.setValue(0.5f, noEcho);
    plugin.endParameterBatch();
    EXPECT_TRUE(recorder.forwarded.empty());
    EXPECT_EQ(recorder.told, Indices{-1});
    plugin.beginParameterBatch();
    plugin.endParameterBatch();
    EXPECT_EQ(recorder.told.size(), 1u);
}

TEST_F(PluginFixture, BringsAChangeOfAnotherThreadToTheMainThread)
{
    std::thread([&] {
        EXPECT_FALSE(plugin.isMainThread());
        plugin.second.setValue(0.5f, announceChange);
        plugin.first.setValue(0.5f, noEcho);
        plugin.postLatencyChange();
        plugin.beginParameterBatch();
        plugin.first.setValue(0.25f, announceChange);
        plugin.requestSoftReset();
        plugin.endParameterBatch();
        plugin.asyncQueue().post(2, 2);  // no such parameter
    }).join();
    EXPECT_TRUE(recorder.forwarded.empty());
    EXPECT_EQ(recorder.told, (Indices{1, 0, -1}));  // the listener hears at once
    plugin.asyncQueue().deliver();
    EXPECT_EQ(recorder.forwarded, (Indices{1, GenericPlugin::WithSoftReset}));
    EXPECT_EQ(recorder.latencyChanges, 1);
    EXPECT_EQ(plugin.modificationCount(), 3u);
}

TEST_F(PluginFixture, TakesTheThreadOfItsListenerForTheMainThread)
{
    std::thread([&] {
        plugin.setListener(&recorder);
        plugin.first.setValue(0.5f, announceChange);
        EXPECT_EQ(recorder.forwarded, Indices{0});
    }).join();
    EXPECT_FALSE(plugin.isMainThread());
    plugin.setListener(nullptr);  // changes nothing about it
    EXPECT_FALSE(plugin.isMainThread());
}

TEST(ProgramChanges, SelectAPresetWhereAUserHasAskedForIt)
{
    const TemporaryHome home;
    TestPlugin plugin;
    plugin.requestProgramChange(0, 5);
    plugin.sharedSettings().enableMIDIProgramChanges.assign(true);
    plugin.requestProgramChange(3, 127);  // 3 x 128 + 127
    EXPECT_TRUE(plugin.presets.empty());
    plugin.asyncQueue().deliver();
    EXPECT_EQ(plugin.presets, std::vector<int>{511});
}

TEST(PluginInstances, KnowEachOtherByName)
{
    TestPlugin first;
    auto second = std::make_unique<TestPlugin>();
    Recorder recorder;
    second->setAdapter(&recorder);
    second->setListener(&recorder);
    EXPECT_EQ(first.instanceName(), "Sordelin");
    EXPECT_EQ(second->instanceName(), "Sordelin (2)");
    EXPECT_EQ(second->productName(), "Sordelin 2");
    EXPECT_EQ(second->pluginCode(), 0x4D537464u);
    EXPECT_EQ(second->channelLayout(), 1);
    EXPECT_EQ(second->interfaceVersion(), 16);
    second->setInstanceName("Solo");
    EXPECT_EQ(recorder.renames, 1);
    EXPECT_EQ(recorder.stateChanges, std::vector{GenericPlugin::StateChange::Other});
    EXPECT_EQ(first.group(), 0);
    EXPECT_EQ(second->group(), 1);
    second.reset();
    EXPECT_EQ(TestPlugin().instanceName(), "Sordelin (2)");
}

TEST(PluginInstances, GoByTheirTrackWhereTheProductAsksForIt)
{
    TestPlugin plugin;
    TrackContext context;
    context.trackName = "Drums";
    plugin.setTrackContext(context);
    EXPECT_EQ(plugin.instanceName(), "Sordelin");
    plugin.flags |= GenericPluginInfo::WantsTrackInfo;
    plugin.setTrackContext(context);
    EXPECT_EQ(plugin.instanceName(), "Drums");
    EXPECT_EQ(TestPlugin().instanceName(), "Sordelin");
}

TEST(PluginInstances, ComeAndGoOnSeveralThreads)
{
    const TemporaryHome home;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 50; ++round) {
                TestPlugin one, two;
                EXPECT_NE(one.instanceName(), two.instanceName());
                EXPECT_NE(one.group(), two.group());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    TestPlugin after;  // all of it has gone
    EXPECT_EQ(after.instanceName(), "Sordelin");
    EXPECT_EQ(after.group(), 0);
}

namespace {

void storeSettings(const TemporaryHome& home, const char* file, const std::string& text)
{
    std::filesystem::create_directories(home.folder / "config/Morvelane/Sordelin");
    home.folder.write(file, text);
}

constexpr const char* productFile = "config/Morvelane/Sordelin/2.0.toml";
constexpr const char* makerFile = "config/Morvelane.toml";

}  // namespace

TEST(StoredSettings, ReachTheNextInstanceAndTheNextProcess)
{
    const TemporaryHome home;
    {
        TestPlugin first;
        EXPECT_TRUE(first.settings().loaded.value() && first.sharedSettings().loaded.value());
        EXPECT_EQ(home.folder.read(productFile), "");  // opening stores nothing
        EXPECT_EQ(first.settings().interfaceWidth.value(), 300);
        first.settings().interfaceWidth.assign(800);
        first.sharedSettings().showInteractiveHelp.assign(false);
        TestPlugin second;
        EXPECT_EQ(second.settings().interfaceWidth.value(), 800);
        EXPECT_EQ(&second.sharedSettings(), &first.sharedSettings());
        second.settings().interfaceWidth.assign(20000);
        EXPECT_EQ(first.settings().interfaceWidth.value(), 800);
    }
    TestPlugin later;
    EXPECT_EQ(later.settings().interfaceWidth.value(), 16000);
    EXPECT_FALSE(later.sharedSettings().showInteractiveHelp.value());
}

TEST(StoredSettings, SayHowInterfacesAreDrawn)
{
    struct Row {
        const char* product;
        const char* maker;
        int mode;
        float scale;
    };
    for (const auto& [product, maker, mode, scale] : {
             Row{"", "", 1, 0.0f},
             Row{"RetinaEnabled = 150\n", "", 1, 1.5f},
             Row{"RetinaEnabled = 0\n", "", 1, 1.0f},
             Row{"RetinaEnabled = 99\n", "", 1, 1.0f},
             Row{"RetinaEnabled = 100\n", "", 1, 1.0f},
             Row{"RetinaEnabled = \"150\"\n", "", 1, 0.0f},
             Row{"GraphicsAcceleration = 0\n", "", 0, 0.0f},
             Row{"GraphicsAcceleration = 2\nRetinaEnabled = 150\n", "GraphicsAcceleration = 0\n", 0, 1.5f},
             Row{"RetinaEnabled = 150\n", "RetinaEnabled = 1\n", 1, 0.0f},
             Row{"RetinaEnabled = 150\n", "RetinaEnabled = 1000\n", 1, 3.0f},
             Row{"GraphicsAcceleration = 2\n", "GraphicsAcceleration = -1\n", 2, 0.0f},
         }) {
        const TemporaryHome home;
        storeSettings(home, productFile, product);
        storeSettings(home, makerFile, maker);
        TestPlugin plugin;
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(static_cast<int>(plugin.graphicsMode()), mode) << product << maker;
            EXPECT_EQ(plugin.interfaceScale(), scale) << product << maker;
            plugin.writeSettings();
        }
        EXPECT_EQ(home.folder.read(makerFile), maker);  // that is for reading
    }
}

TEST(StoredSettings, HoldTheFolderOfThePresets)
{
    const TemporaryHome home;
    TestPlugin plugin;
    const std::string usual = home.folder / "Documents/Morvelane/Presets/Sordelin 2/";
    EXPECT_EQ(plugin.presetRoot(), usual);
    const std::string other = home.folder / "elsewhere/";
    std::filesystem::create_directory(other);
    storeSettings(home, productFile, "PresetFolder = \"" + other + "\"\n");
    plugin.readSettings();
    EXPECT_EQ(plugin.presetRoot(), other);
    std::filesystem::remove(home.folder / productFile);
    plugin.writeSettings();
    EXPECT_NE(home.folder.read(productFile).find("PresetFolder = \"" + other + "\"\n"), std::string::npos);
    std::filesystem::remove(home.folder / productFile);
    plugin.readSettings();
    EXPECT_EQ(plugin.presetRoot(), usual);
}

TEST(ControllerMap, IsSharedByAllInstancesAndOutlivesThem)
{
    const TemporaryHome home;
    {
        TestPlugin plugin;
        Recorder recorder;
        plugin.setAdapter(&recorder);
        plugin.setListener(&recorder);
        auto second = std::make_unique<TestPlugin>();
        Recorder secondRecorder;
        second->setAdapter(&secondRecorder);
        EXPECT_EQ(&second->controllerMapping(), &plugin.controllerMapping());
        second->controllerMapping().assign(7, 1);
        EXPECT_EQ(recorder.mapChanges, 1);
        EXPECT_EQ(recorder.mapMessages, 1);
        EXPECT_TRUE(second->saveControllerMap().succeeded());
        second.reset();
        plugin.controllerMapping().assign(8, 0);  // never saved
        EXPECT_EQ(secondRecorder.mapChanges, 1);  // before it went
        EXPECT_EQ(recorder.mapChanges, 2);
        EXPECT_TRUE(plugin.loadControllerMap());
        EXPECT_EQ(plugin.controllerMapping().targetOf(8), -1);
    }
    EXPECT_EQ(home.folder.read("data/Morvelane/Sordelin 2/MidiControllerMap.mvm"),
              controllerMapBytes({{7, 1}}));
    TestPlugin later;
    EXPECT_EQ(later.controllerMapping().targetOf(7), 1);
    later.loadDefaultControllerMap();
    EXPECT_EQ(later.controllerMapping().targetOf(7), -1);
}

TEST(ControllerMap, StartsEmptyWithoutAFileThatIsOne)
{
    for (const std::string& bytes : {std::string(), std::string("MVCN"), std::string("MVCM\1"),
                                     "MVCX" + controllerMapBytes({{7, 1}}).substr(4)}) {
        const TemporaryHome home;
        if (!bytes.empty())
            writeControllerMap(home.productData(), bytes);
        TestPlugin plugin;
        EXPECT_FALSE(plugin.loadControllerMap());
        for (int controller = 0; controller < 128; ++controller)
            EXPECT_EQ(plugin.controllerMapping().targetOf(controller), -1);
    }
}

TEST(ControllerMap, SaysWhyItCannotBeKept)
{
    const TemporaryHome home;
    TestPlugin plugin;
    plugin.controllerMapping().assign(7, 1);
    home.folder.write("data", "a file where the folder would be");
    const ErrorResult result = plugin.saveControllerMap();
    EXPECT_EQ(result.code(), -1);
    EXPECT_NE(result.message().find("MidiControllerMap.mvm\": Not a directory"), std::string::npos)
        << result.message();
    EXPECT_EQ(plugin.controllerMapping().targetOf(7), 1);
    EXPECT_FALSE(plugin.loadControllerMap());
}

TEST(ControllerMap, IsThereForInstancesThatComeAndGoOnManyThreads)
{
    const TemporaryHome home;
    writeControllerMap(home.productData(), controllerMapBytes({{7, 1}}));
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&wrong] {
            for (int round = 0; round < 100; ++round) {
                TestPlugin plugin;
                wrong += plugin.controllerMapping().targetOf(7) != 1;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
