#include "modulation/LevelPanTarget.h"
#include "modulation/Mixer.h"
#include "modulation/Router.h"
#include "modulation/StaticMixer.h"

#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

float ramp(std::uint64_t t) { return static_cast<float>(t); }

std::function<float(std::uint64_t)> constant(float value)
{
    return [value](std::uint64_t) { return value; };
}

}  // namespace

TEST(Router, IsAPointerAtRestAndACrossfadeOfTwentyMillisecondsBetween)
{
    GraphFixture graph;
    FunctionProducer first(graph.environment, constant(1.0f)), second(graph.environment, constant(-1.0f));
    Router router(graph.environment, 2);
    router.setSource(0, first);
    router.setSource(1, second);
    graph.render(router, 200);
    EXPECT_EQ(&router.currentBlock(), &first.currentBlock());
    EXPECT_TRUE(second.runs.empty());

    router.index.assign(1);
    const std::vector<float> out = graph.render(router, 1100);  // 882 samples of fade at 44.1 kHz
    for (std::size_t i = 0; i < 882; ++i)
        ASSERT_NEAR(out[i], 1.0 - 2.0 * static_cast<double>(i) / 882.0, 1e-5);
    EXPECT_EQ(out.back(), -1.0f);
    const std::size_t runs = first.runs.size();
    graph.render(router, 200);
    EXPECT_EQ(&router.currentBlock(), &second.currentBlock());
    EXPECT_EQ(first.runs.size(), runs);
}

TEST(Router, TurnsRoundInTheMiddleOfAFadeWithoutAStep)
{
    GraphFixture graph;
    FunctionProducer first(graph.environment, constant(1.0f)), second(graph.environment, constant(-1.0f));
    Router router(graph.environment, 2);
    router.setSource(0, first);
    router.setSource(1, second);
    graph.render(router, 128);
    std::vector<float> out;
    for (int turn = 1; turn < 8; ++turn) {
        router.index.assign(turn % 2);
        const std::vector<float> part = graph.render(router, 300);
        out.insert(out.end(), part.begin(), part.end());
    }
    EXPECT_LT(signals::largestStep(out, 0, out.size()), 2.1 / 882.0);
}

TEST(Mixer, SumsWhatIsHeardAndPullsNothingElse)
{
    GraphFixture graph;
    FunctionProducer a(graph.environment, ramp), b(graph.environment, constant(2.0f)),
        unheard(graph.environment, ramp);
    Mixer mixer(graph.environment, 4);
    mixer.mixerInput(0).source = &a;
    mixer.mixerInput(1).source = &b;
    mixer.mixerInput(2).source = &unheard;
    mixer.mixerInput(1).gain.parameter().setValue(0.25f, 0.0f);
    mixer.mixerInput(2).gain.parameter().setValue(0.0f, 0.0f);
    EXPECT_EQ(graph.render(mixer, 3), (std::vector<float>{0.5f, 1.5f, 2.5f}));
    EXPECT_TRUE(unheard.runs.empty());

    mixer.mixerInput(1).gain.parameter().setValue(0.0f, 0.0f);
    graph.render(mixer, 3);
    EXPECT_EQ(&mixer.currentBlock(), &a.currentBlock());  // one input at unity: no copy
    mixer.mixerInput(0).gain.parameter().setValue(0.0f, 0.0f);
    graph.render(mixer, 3);
    EXPECT_EQ(&mixer.currentBlock(), &graph.environment.silentBlock());
}

TEST(Mixer, JoinsByEachOperation)
{
    using enum Mixer::Operation;
    struct Row {
        Mixer::Operation operation;
        float first, second, result;
    };
    for (const auto& [operation, first, second, result] : {
             Row{Add, 3.0f, -4.0f, -1.0f},
             Row{Subtract, 3.0f, -4.0f, 7.0f},
             Row{LargestMagnitude, -3.0f, -4.0f, 4.0f},
             Row{LargestMagnitude, -5.0f, 4.0f, 5.0f},
             Row{Multiply, 3.0f, -4.0f, -12.0f},
             Row{DivideClamped, -1.0f, -4.0f, 0.25f},
             Row{DivideClamped, 8.0f, 4.0f, 1.0f},
             Row{DivideClamped, 8.0f, 0.0f, 0.0f},
             Row{DivideFloored, -8.0f, -4.0f, 2.0f},
             Row{DivideFloored, 0.0f, 0.0f, 1.0f},
             Row{DivideHeld, -8.0f, -4.0f, 2.0f},
             Row{DivideHeld, 8.0f, 0.0f, 1.0f},
             Row{Largest, -3.0f, -4.0f, -3.0f},
             Row{Smallest, -3.0f, -4.0f, -4.0f},
         }) {
        GraphFixture graph;
        FunctionProducer a(graph.environment, constant(first)), b(graph.environment, constant(second));
        Mixer mixer(graph.environment, 2, operation);
        mixer.mixerInput(0).source = &a;
        mixer.mixerInput(1).source = &b;
        EXPECT_FLOAT_EQ(graph.render(mixer, 4)[3], result) << static_cast<int>(operation);
        EXPECT_TRUE(mixer.currentBlock().isConstant());
    }
}

TEST(StaticMixer, SumsWithFixedGainsAndStaysConstantWhileItsInputsAre)
{
    GraphFixture graph;
    FunctionProducer two(graph.environment, constant(2.0f)), moving(graph.environment, ramp);
    StaticMixer halves(graph.environment), single(graph.environment), steady(graph.environment);
    halves.add(0.5f, &two);
    halves.add(0.5f, nullptr);
    halves.add(0.5f, &moving);
    single.add(1.0f, &moving);
    steady.add(1.0f, &two);
    steady.add(0.25f, &two);
    graph.environment.nextGeneration();
    EXPECT_EQ(halves.pull(8)[6], 4.0f);
    EXPECT_FALSE(halves.currentBlock().isConstant());
    EXPECT_EQ(&single.pull(8), &moving.currentBlock());
    EXPECT_EQ(steady.pull(8)[7], 2.5f);
    EXPECT_TRUE(steady.currentBlock().isConstant());
}

TEST(LevelPanTarget, BalancesOrSpreadsAndNeverJumps)
{
    ModulationConfiguration configuration;
    configuration.ranges.resize(2);
    configuration.ranges[0].upper = 20.0f;  // level or frequency
    configuration.ranges[1].lower = -1.0f;
    configuration.targetRanges = {0, 1};
    struct Row {
        LevelPanTarget::Mode mode;
        float level, pan, first, second;
    };
    for (const auto& [mode, level, pan, first, second] :
         {Row{LevelPanTarget::Mode::Multiply, 0.5f, 0.5f, 0.25f, 0.5f},
          Row{LevelPanTarget::Mode::Multiply, 0.5f, -1.0f, 0.5f, 0.0f},
          Row{LevelPanTarget::Mode::Add, 10.0f, 1.0f, 11.0f, 9.0f}}) {
        GraphFixture graph;
        ModulationMatrix matrix(graph.environment, configuration);
        LevelPanTarget joined(graph.environment, matrix, 0, 1, mode);
        matrix.target(0).setParameterSignal(level);
        graph.render(joined.output(0), 44100);
        EXPECT_EQ(joined.output(0).currentBlock()[0], level);
        // The first move of the pan, and then the way back, in straight ramps of 20 ms or more.
        const double limit = 1.01 * std::fabs(first - level) / 882.0 + 1e-6;
        matrix.target(1).setParameterSignal(pan);
        const std::vector<float> there = graph.render(joined.output(0), 44100);
        matrix.target(1).setParameterSignal(0.0f);
        const std::vector<float> back = graph.render(joined.output(0), 44100);
        EXPECT_FLOAT_EQ(there.back(), first);
        EXPECT_FLOAT_EQ(back.back(), level);
        EXPECT_LE(signals::largestStep(there, 0, there.size()), limit);
        EXPECT_LE(signals::largestStep(back, 0, back.size()), limit);
        EXPECT_LE(std::fabs(there[0] - level), limit);
        EXPECT_LE(std::fabs(back[0] - first), limit);
        matrix.target(1).setParameterSignal(pan);
        EXPECT_FLOAT_EQ(graph.render(joined.output(1), 44100).back(), second);
    }
}
