#include "dsp/GainAdjuster.h"
#include "dsp/MidSideConverter.h"
#include "dsp/SignalSmoother.h"
#include "dsp/VolumeFilter.h"

#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

std::function<float(std::uint64_t)> constant(float value)
{
    return [value](std::uint64_t) { return value; };
}

}  // namespace

TEST(SignalSmoother, RisesWithoutOvershootAsACriticallyDampedLowPass)
{
    // 1 - (1 + w t) exp(-w t) with w = 2 pi 5: 0.8209 after 0.1 s, 0.9864 after 0.2 s.
    GraphFixture graph;
    SignalSmoother smoother(graph.environment);
    FunctionProducer step(graph.environment, constant(-1.0f));
    smoother.input = &step;
    smoother.method.assign(SignalSmoother::SmoothMethod::Rectify);
    const std::vector<float> out = graph.render(smoother, 44100);
    EXPECT_NEAR(out[4410], 0.8209, 0.001);
    EXPECT_NEAR(out[8820], 0.9864, 0.001);
    for (std::size_t i = 1; i < out.size(); ++i)
        ASSERT_TRUE(out[i] >= out[i - 1] - 1e-4f && out[i] <= 1.0f);
    EXPECT_EQ(out.back(), 1.0f);  // settled, and not the input's own -1
}

TEST(SignalSmoother, ShowsTheSilentBlockOnceItHasSettledOnIt)
{
    GraphFixture graph;
    SignalSmoother smoother(graph.environment);
    FunctionProducer burst(graph.environment, [](std::uint64_t t) { return t < 1000 ? 1.0f : 0.0f; });
    smoother.input = &burst;
    graph.render(smoother, 44100);
    EXPECT_EQ(&smoother.currentBlock(), &burst.currentBlock());
}

TEST(GainAdjuster, HoldsAFilterToTheLevelThatWentInWithinTwentyDecibels)
{
    struct Row {
        float before, behind, ratio;
    };
    for (const auto& [before, behind, ratio] :
         {Row{0.5f, 1.0f, 0.5f}, Row{1.0f, 0.5f, 1.0f}, Row{0.01f, 1.0f, 0.1f}, Row{1.0f, 0.0f, 1.0f}}) {
        GraphFixture graph;
        GainAdjuster adjuster(graph.environment);
        FunctionProducer signal(graph.environment, constant(2.0f));
        FunctionProducer delayLevel(graph.environment, constant(before)),
            filterLevel(graph.environment, constant(behind));
        adjuster.input = &signal;
        adjuster.delayLevel = &delayLevel;
        adjuster.filterLevel = &filterLevel;
        EXPECT_FLOAT_EQ(graph.render(adjuster, 4)[3], 2.0f * ratio);
    }
}

TEST(GainAdjuster, PassesThroughSilenceWhenTheSignTurns)
{
    GraphFixture graph;
    GainAdjuster adjuster(graph.environment);
    FunctionProducer signal(graph.environment, constant(1.0f));
    adjuster.input = &signal;
    graph.render(adjuster, 128);
    EXPECT_EQ(&adjuster.currentBlock(), &signal.currentBlock());  // free at unity
    adjuster.gain.assign(-1.0f);                                  // 20 ms, 882 samples
    const std::vector<float> out = graph.render(adjuster, 1000);
    for (std::size_t i = 0; i < 882; ++i)
        ASSERT_NEAR(out[i], 1.0 - 2.0 * static_cast<double>(i) / 882.0, 1e-5);
    EXPECT_EQ(out.back(), -1.0f);
}

TEST(VolumeFilter, IsFreeAtZeroAndAtUnity)
{
    GraphFixture graph;
    VolumeFilter volume(graph.environment);
    FunctionProducer signal(graph.environment, [](std::uint64_t t) { return static_cast<float>(t % 3); });
    FunctionProducer multiplier(graph.environment, constant(0.5f));
    volume.input = &signal;
    graph.render(volume, 64);
    EXPECT_EQ(&volume.currentBlock(), &signal.currentBlock());

    volume.multiplier = &multiplier;
    EXPECT_EQ(graph.render(volume, 3), (std::vector<float>{0.5f, 1.0f, 0.0f}));  // samples 64, 65, 66
    const std::size_t before = multiplier.runs.size();
    volume.level.parameter().setValue(0.0f, 0.0f);
    graph.render(volume, 3);
    EXPECT_EQ(multiplier.runs.size(), before);
    EXPECT_EQ(&volume.currentBlock(), &graph.environment.silentBlock());

    struct Muted : wave::MuteController {
        bool isMuted() noexcept override { return true; }
    } muted;
    volume.muteController = &muted;
    const std::size_t pulled = signal.runs.size();
    graph.render(volume, 3);
    EXPECT_EQ(signal.runs.size(), pulled);
}

TEST(MidSideConverter, CodesThereAndBack)
{
    GraphFixture graph;
    const std::vector<float> left = signals::noise(1000, 6);
    const std::vector<float> right = signals::noise(1000, 7);
    FunctionProducer l(graph.environment, playing(left)), r(graph.environment, playing(right));
    MidSideConverter encoder(graph.environment), decoder(graph.environment);
    encoder.conversion.assign(MidSideConverter::Conversion::Encode);
    decoder.conversion.assign(MidSideConverter::Conversion::Decode);
    encoder.setInput(0, l);
    encoder.setInput(1, r);
    decoder.setInput(0, encoder.output(0));
    decoder.setInput(1, encoder.output(1));
    std::vector<float> back[2];
    for (int block = 0; block < 10; ++block) {
        graph.environment.nextGeneration();
        for (int c = 0; c < 2; ++c) {
            const wave::Block& out = decoder.output(c).pull(100);
            back[c].insert(back[c].end(), out.data(), out.data() + 100);
        }
        const std::size_t at = static_cast<std::size_t>(block) * 100 + 50;
        EXPECT_NEAR(encoder.output(0).currentBlock()[50], (left[at] + right[at]) / 2, 1e-6);
        EXPECT_NEAR(encoder.output(1).currentBlock()[50], (right[at] - left[at]) / 2, 1e-6);
        graph.environment.run(100, false);
    }
    EXPECT_LT(signals::largestDifference(back[0], left), 2e-7);
    EXPECT_LT(signals::largestDifference(back[1], right), 2e-7);
}
