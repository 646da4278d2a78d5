#include "core/PluginMessageQueue.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

struct MessageFixture : testing::Test, PluginMessageQueue::Receiver {
    void latencyMessage() override { ++latencies; }
    void presetMessage(int bank, int program) override { presets.emplace_back(bank, program); }
    void parameterMessage(int index) override { parameters.push_back(index); }

    int latencies = 0;
    std::vector<std::pair<int, int>> presets;
    std::vector<int> parameters;
    PluginMessageQueue messages{*this};
};
using Presets = std::vector<std::pair<int, int>>;

}  // namespace

TEST_F(MessageFixture, TurnsPostsIntoCalls)
{
    messages.postParameterChange(704);
    messages.postLatencyChange();
    messages.postParameterChange(-3);
    messages.postPreset(16383, 127);
    messages.events().deliver();
    EXPECT_EQ(parameters, (std::vector<int>{704, -3}));
    EXPECT_EQ(latencies, 1);
    EXPECT_EQ(presets, (Presets{{16383, 127}}));
    messages.events().post(17, 0);  // nothing of ours
    messages.events().deliver();
    EXPECT_EQ(parameters.size(), 2u);
}

TEST_F(MessageFixture, LoadsTheLastPresetAlone)
{
    for (const int program : {5, 7, 5})
        messages.postPreset(0, program);
    messages.events().deliver();
    EXPECT_EQ(presets, (Presets{{0, 5}}));
    messages.postPreset(0, 5);  // again, later
    messages.events().deliver();
    EXPECT_EQ(presets.size(), 2u);
}

TEST_F(MessageFixture, MakesUpForWhatDidNotFit)
{
    struct Row {
        std::vector<int> lost;
        int told;
    };
    for (const auto& [lost, told] : {Row{{3, 700}, -1}, Row{{-2, 5}, -2}, Row{{-2, -3, -1}, -3}}) {
        parameters.clear();
        presets.clear();
        latencies = 0;
        for (int i = 0; i < DeferredEventQueue::capacity; ++i)
            messages.postParameterChange(9);
        for (const int index : lost)
            messages.postParameterChange(index);
        messages.postPreset(1, 2);
        messages.postPreset(1, 3);
        messages.postLatencyChange();
        EXPECT_TRUE(messages.events().isAwaited());
        while (messages.events().isAwaited())
            messages.events().deliver();
        EXPECT_EQ(parameters.size(), static_cast<std::size_t>(DeferredEventQueue::capacity) + 1);
        EXPECT_EQ(parameters.back(), told);
        EXPECT_EQ(presets, (Presets{{1, 3}}));
        EXPECT_EQ(latencies, 1);
    }
}
