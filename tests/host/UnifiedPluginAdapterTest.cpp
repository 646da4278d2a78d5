#include "host/UnifiedPluginAdapter.h"

#include "parameters/FloatPluginParameter.h"

#include <gtest/gtest.h>

namespace {

/// Each half has one parameter.
struct PluginHalf : GenericPlugin {
    PluginHalf()
    {
        versionedName = "Sordelin 2";
        code = "MStd";
        joinProcess();
    }
    ~PluginHalf() override { leaveProcess(); }
    FloatPluginParameter level{this, "Level"};
};

struct ProcessorHalf : GenericPluginProcessor {
    ProcessorHalf() { createEngine(); }
    FloatPluginParameter level{this, "Level"};
};

struct Adapter : UnifiedPluginAdapter {
    Adapter() { createHalves(); }
    std::unique_ptr<GenericPlugin> createPlugin() override { return std::make_unique<PluginHalf>(); }
    std::unique_ptr<GenericPluginProcessor> createProcessor() override
    {
        return std::make_unique<ProcessorHalf>();
    }
    void setParameter(int index, float value) noexcept override { automate(index, value); }
    void beginParameterGesture(int) override {}
    void endParameterGesture(int) override {}
    void latencyChanged() override {}
    void stateChanged(GenericPlugin::StateChange) override {}
    using UnifiedPluginAdapter::plugin;
    using UnifiedPluginAdapter::processor;
};

/// Sets the value anew as soon as it has reached the plug-in, as another thread might.
struct OtherThread final : ParameterListener {
    explicit OtherThread(Adapter& setAdapter) : adapter(setAdapter)
    {
        adapter.plugin->parameter(0).addListener(*this);
    }
    void parameterDelivered(AbstractPluginParameter&, float value) noexcept override
    {
        if (value != 0.25f)
            adapter.setParameter(0, 0.25f);
    }
    Adapter& adapter;
};

}  // namespace

TEST(UnifiedPluginAdapter, LeavesBothHalvesAlikeWhenTwoThreadsSetAValue)
{
    Adapter adapter;
    OtherThread other(adapter);
    adapter.setParameter(0, 0.75f);
    EXPECT_EQ(adapter.plugin->parameter(0).currentValue(), 0.25f);
    EXPECT_EQ(adapter.processor->parameter(0).currentValue(), 0.25f);
}
