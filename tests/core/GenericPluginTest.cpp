#include "core/GenericPlugin.h"
#include "parameters/FloatPluginParameter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct TestPlugin : GenericPlugin {
    FloatPluginParameter first{this, "First"};
    FloatPluginParameter second{this, "Second"};
};

struct Recorder : GenericPlugin::Adapter, GenericPlugin::Listener {
    void sendParameterValue(int, float) override {}
    void beginParameterGesture(int) override {}
    void endParameterGesture(int) override {}
    void latencyChanged() override {}
    void parameterChanged(int index) override { forwarded.push_back(index); }
    void message(int code, int argument) noexcept override
    {
        if (code == ParameterChanged)
            told.push_back(argument);
    }
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
