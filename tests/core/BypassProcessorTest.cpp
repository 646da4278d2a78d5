#include "TestProcessor.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

const std::vector<float> zeros(512, 0.0f);

}  // namespace

TEST(BypassProcessor, FadesBetweenWetAndDryInFiftyMilliseconds)
{
    const std::vector<float> ones(5000, 1.0f);
    TestProcessor processor;
    processor.gain.setValue(0.5f, noEcho);
    EXPECT_EQ(processor.play(ones).back(), 0.5f);
    processor.bypass.setValue(1.0f, noEcho);
    const std::vector<float> out = processor.play(ones);
    for (std::size_t i = 0; i < out.size(); ++i)  // 2205 samples
        ASSERT_NEAR(out[i], 0.5 + 0.5 * std::min(static_cast<double>(i) / 2205.0, 1.0), 1e-5);
    processor.log.clear();
    processor.play(ones);
    EXPECT_TRUE(processor.log.empty());  // the engine rests
    processor.bypass.setValue(0.0f, noEcho);
    const std::vector<float> back = processor.play(ones);
    EXPECT_NEAR(back[1], 1.0, 1e-3);
    EXPECT_EQ(back.back(), 0.5f);
}

TEST(BypassProcessor, DelaysTheDrySignalByTheLatencyAtAllTimes)
{
    const std::vector<float> in = signals::noise(20000, 8);
    TestProcessor processor(1000);
    processor.wetGain = 0.0f;
    processor.bypass.setValue(1.0f, noEcho);
    const std::vector<float> out = processor.play(in);
    for (std::size_t i = 5000; i < in.size(); ++i)
        ASSERT_EQ(out[i], in[i - 1000]);
    // Back: dry until the engine has filled up for the length of the latency, then a fade.
    processor.bypass.setValue(0.0f, noEcho);
    const std::vector<float> back = processor.play(in);
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_EQ(back[i], in[in.size() - 1000 + i]);
    EXPECT_EQ(back.back(), 0.0f);
}

TEST(BypassProcessor, SleepsOnSilenceAfterAResetUntilSomethingComes)
{
    TestProcessor processor;
    const std::vector<float> out = processor.play(zeros, 512, BypassProcessor::InputSilent);
    EXPECT_TRUE(processor.log.empty());
    EXPECT_EQ(out, zeros);
    EXPECT_TRUE(processor.status & BypassProcessor::OutputSilent);

    processor.play(std::vector<float>(512, 1.0f));
    EXPECT_EQ(processor.log.size(), 4u);
    EXPECT_FALSE(processor.status & BypassProcessor::OutputSilent);
}

TEST(BypassProcessor, PlaysAFiniteTailToItsEndBeforeItSleeps)
{
    TestProcessor processor(0, 1000);
    processor.play(std::vector<float>(512, 1.0f));
    processor.log.clear();
    for (int i = 0; i < 10; ++i)
        processor.play(zeros, 512, BypassProcessor::InputSilent);
    int rendered = 0;
    for (const auto& [kind, length] : processor.log)
        rendered += length;
    EXPECT_GE(rendered, 1000);
    EXPECT_LT(rendered, 1000 + 128);
    EXPECT_TRUE(processor.status & BypassProcessor::OutputSilent);
}

TEST(BypassProcessor, WritesOverTheInputsOwnMemory)
{
    TestProcessor processor;
    processor.gain.setValue(0.5f, noEcho);
    std::vector<float> buffer = signals::noise(512, 9);
    const std::vector<float> in = buffer;
    std::vector<float> other = buffer;
    const float* inputs[] = {buffer.data(), other.data()};
    float* outputs[] = {buffer.data(), other.data()};
    processor.process(inputs, 2, outputs, 2, 512, processor.status);
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_EQ(buffer[i], in[i] * 0.5f);
}
