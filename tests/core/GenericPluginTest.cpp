#include "core/GenericPlugin.h"
#include "parameters/FloatPluginParameter.h"
#include "support/ControllerMapFile.h"

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
        versionedName = "Sordelin 2";
        joinProcess();
    }
    FloatPluginParameter first{this, "First"};
    FloatPluginParameter second{this, "Second"};
};

struct Recorder : GenericPlugin::Adapter, GenericPlugin::Listener {
    void sendParameterValue(int, float) override {}
    void beginParameterGesture(int) override {}
    void endParameterGesture(int) override {}
    void latencyChanged() override {}
    void parameterChanged(int index) override { forwarded.push_back(index); }
    void controllerMapChanged() override { ++mapChanges; }
    void pullDisplayData(bool) override {}
    void message(int code, int argument) noexcept override
    {
        if (code == ParameterChanged)
            told.push_back(argument);
        mapMessages += code == ControllerMapChanged;
    }
    int mapChanges = 0;
    int mapMessages = 0;
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
