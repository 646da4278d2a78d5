#include "support/GraphFixture.h"
#include "wave/FloatParameterSource.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct ParameterFixture : GraphFixture {
    FloatParameterSource source{environment, 0.0f};

    std::vector<float> play(int samples) { return render(source, samples); }
    /// How many samples the signal needs from now on until it rests on its target.
    int samplesToSettle()
    {
        const std::vector<float> out = play(20000);
        int last = 0;
        for (int i = 0; i < static_cast<int>(out.size()); ++i) {
            if (out[static_cast<std::size_t>(i)] != out.back())
                last = i + 1;
        }
        return last;
    }
};

}  // namespace

TEST(FloatParameter, BigStepsRampFastSmallOnesSlowly)
{
    // ms = 20 + 130 t^2 / 0.09, t = max(0.3 - step, 0); samples = trunc(44.1 ms)
    struct Row {
        float step;
        int samples;
    };
    for (const auto& [step, samples] : {Row{0.05f, 4863},   // t = 0.25: 110.28 ms
                                        Row{0.15f, 2315},   // t = 0.15:  52.50 ms
                                        Row{0.5f, 882}}) {  // t = 0:     20 ms
        ParameterFixture fixture;
        fixture.play(128);
        fixture.source.assign(step);
        EXPECT_NEAR(fixture.samplesToSettle(), samples, 1) << step;
    }
}

TEST(FloatParameter, RampsInAStraightLineAndThenRests)
{
    ParameterFixture fixture;
    fixture.play(100);
    fixture.source.parameter.setValue(1.0f, 2.0f);  // 88 samples
    const std::vector<float> out = fixture.play(100);
    for (int i = 0; i < 88; ++i)
        EXPECT_NEAR(out[static_cast<std::size_t>(i)], i / 88.0, 1e-6);
    for (std::size_t i = 88; i < 100; ++i)
        EXPECT_EQ(out[i], 1.0f);
    EXPECT_FALSE(fixture.source.currentBlock().isConstant());
    fixture.play(10);
    EXPECT_TRUE(fixture.source.currentBlock().isConstant());
}

TEST(FloatParameter, ASecondValueStartsWhereTheFirstRampStands)
{
    ParameterFixture fixture;
    fixture.play(128);
    fixture.source.parameter.setValue(1.0f, 10.0f);  // 441 samples
    fixture.play(100);
    fixture.source.parameter.setValue(0.0f, 10.0f);
    fixture.source.parameter.setValue(0.5f, 10.0f);  // in the same block
    EXPECT_NEAR(fixture.play(1)[0], 100 / 441.0, 1e-6);
}

TEST(FloatParameter, JumpsWhenNobodyReadItOrAfterAReset)
{
    ParameterFixture unread;
    unread.play(128);
    unread.skip(128);
    unread.source.assign(0.2f);
    EXPECT_EQ(unread.play(1)[0], 0.2f);

    ParameterFixture fresh;
    fresh.play(128);
    fresh.environment.reset(wave::Environment::Reset::Soft);
    fresh.source.assign(0.2f);
    EXPECT_EQ(fresh.play(1)[0], 0.2f);

    // A ramp that is on its way when the reset comes ends there.
    ParameterFixture moving;
    moving.play(128);
    moving.source.assign(0.2f);
    moving.play(16);
    moving.environment.reset(wave::Environment::Reset::Soft);
    EXPECT_EQ(moving.play(1)[0], 0.2f);
}

TEST(FloatParameter, TimeThatNobodyReadCountsForTheRamp)
{
    ParameterFixture fixture;
    fixture.play(128);
    fixture.source.parameter.setValue(1.0f, 100.0f);  // 4410 samples
    fixture.play(128);
    fixture.skip(1000);
    EXPECT_NEAR(fixture.play(1)[0], 1128 / 4410.0, 1e-6);
}

TEST(FloatParameter, GoesTheShortWayRoundACircle)
{
    ParameterFixture fixture;
    fixture.source.parameter.setWrapPeriod(1.0f);
    fixture.source.parameter.setRange(-1.0f, 1.0f);
    fixture.source.parameter.setValue(0.9f, 0.0f);
    fixture.play(1);
    fixture.source.parameter.setValue(0.1f, 10.0f);
    const std::vector<float> out = fixture.play(441);
    EXPECT_NEAR(out.front(), -0.1, 1e-6);  // 0.9, one turn earlier
    EXPECT_NEAR(out[220], -0.1 + 0.2 * 220 / 441, 1e-6);
}

TEST(FloatParameter, StaysInItsRangeAndDropsWhatIsNoChange)
{
    ParameterFixture fixture;
    fixture.source.parameter.setRange(0.0f, 0.5f);
    fixture.source.assign(7.0f);
    EXPECT_EQ(fixture.play(1)[0], 0.5f);
    fixture.source.parameter.setRange(0.0f, 0.25f);  // pulls the value along, at once
    EXPECT_EQ(fixture.play(1)[0], 0.25f);
    fixture.source.assign(0.25f + 1e-7f);
    fixture.play(1);
    EXPECT_TRUE(fixture.source.currentBlock().isConstant());
}

TEST(FloatParameter, RampsAlikeHoweverTheBlocksAreCut)
{
    const auto rendered = [](int blockSize) {
        ParameterFixture fixture;
        fixture.play(1);
        fixture.source.assign(0.1f);
        return fixture.render(fixture.source, 6000, blockSize);
    };
    const std::vector<float> whole = rendered(128);
    for (int blockSize : {1, 7, 100}) {
        const std::vector<float> cut = rendered(blockSize);
        for (std::size_t i = 0; i < whole.size(); ++i)
            ASSERT_NEAR(cut[i], whole[i], 2e-7) << blockSize << " at " << i;
    }
}

TEST(FloatParameterBus, ReadsItsOwnParameterUntilSomethingIsConnected)
{
    GraphFixture graph;
    FloatParameterBus bus(graph.environment, 0.25f);
    FunctionProducer other(graph.environment, [](std::uint64_t) { return 9.0f; });
    graph.environment.nextGeneration();
    EXPECT_EQ(bus.pull(4)[3], 0.25f);
    bus.connect(&other);
    EXPECT_EQ(bus.pull(4)[3], 9.0f);
    bus.connect(nullptr);
    EXPECT_EQ(bus.pull(4)[3], 0.25f);
}
