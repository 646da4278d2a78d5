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

namespace {

/// A level and a pan that slots can reach: targets 0 and 1; the source is 1 throughout.
struct LevelAndPan : GraphFixture {
    explicit LevelAndPan(LevelPanTarget::Mode mode, float upper = 20.0f)
    {
        configuration.firstSlotTarget = 2;
        configuration.slotCount = 2;
        configuration.sources.resize(1);
        configuration.ranges.resize(2);
        configuration.ranges[0].upper = upper;
        configuration.ranges[1].lower = -1.0f;
        configuration.targetRanges = {0, 1, 0, 0};
        matrix = std::make_unique<ModulationMatrix>(environment, configuration);
        matrix->setSource(0, &source);
        joined = std::make_unique<LevelPanTarget>(environment, *matrix, 0, 1, mode);
    }
    void connect(int slot, int target, float level)
    {
        matrix->setSlotLevel(slot, level);
        matrix->setSlotSource(slot, 0);
        matrix->setSlotTarget(slot, target);
    }
    void set(float level, float pan)
    {
        matrix->target(0).setParameterSignal(level);
        matrix->target(1).setParameterSignal(pan);
    }
    std::vector<float> play(int channel, int samples) { return render(joined->output(channel), samples); }

    ModulationConfiguration configuration;
    FunctionProducer source{environment, constant(1.0f)};
    std::unique_ptr<ModulationMatrix> matrix;
    std::unique_ptr<LevelPanTarget> joined;
};

}  // namespace

TEST(LevelPanTarget, TakesWhatSlotsAdd)
{
    struct Row {
        LevelPanTarget::Mode mode;
        float level, pan, onLevel, onPan, first, second;
    };
    for (const auto& [mode, level, pan, onLevel, onPan, first, second] :
         {Row{LevelPanTarget::Mode::Multiply, 0.5f, 0.0f, 0.0f, 0.5f, 0.25f, 0.5f},
          Row{LevelPanTarget::Mode::Multiply, 0.5f, -0.75f, 0.25f, 0.25f, 0.75f, 0.375f},
          Row{LevelPanTarget::Mode::Multiply, 0.5f, 0.0f, 0.25f, 0.0f, 0.75f, 0.75f},
          Row{LevelPanTarget::Mode::Add, 10.0f, 0.5f, 0.25f, 0.25f, 11.0f, 9.5f},
          Row{LevelPanTarget::Mode::Add, 19.75f, 0.5f, 0.0f, 0.5f, 20.0f, 18.75f}}) {  // the level's limits
        LevelAndPan fixture(mode);
        fixture.set(level, pan);
        fixture.connect(0, 0, onLevel);
        fixture.connect(1, 1, onPan);
        EXPECT_FLOAT_EQ(fixture.play(0, 300).back(), first);
        EXPECT_TRUE(fixture.joined->output(0).currentBlock().isConstant());
        EXPECT_FLOAT_EQ(fixture.play(1, 300).back(), second);
    }
}

// The joined signals have ramps of their own, which differ from those of their two parts on the way. A slot
// that does nothing must not be heard when it comes or goes in the midst of them.
TEST(LevelPanTarget, PassesToTheSlotsAndBackWithoutAStep)
{
    for (const int slotTarget : {0, 1}) {
        LevelAndPan fixture(LevelPanTarget::Mode::Multiply, 1.0f);
        LevelAndPan untouched(LevelPanTarget::Mode::Multiply, 1.0f);
        for (LevelAndPan* one : {&fixture, &untouched}) {
            one->set(1.0f, 0.0f);
            one->play(0, 1000);
            one->set(0.4f, 0.1f);
        }
        std::vector<float> out, expected;
        for (int i = 0; i < 40; ++i) {
            fixture.connect(0, i % 2 ? -1 : slotTarget, 0.0f);
            if (i == 20)
                for (LevelAndPan* one : {&fixture, &untouched})
                    one->set(0.9f, 0.0f);
            const auto part = fixture.play(0, 177);
            const auto expectedPart = untouched.play(0, 177);
            out.insert(out.end(), part.begin(), part.end());
            expected.insert(expected.end(), expectedPart.begin(), expectedPart.end());
        }
        EXPECT_LT(signals::largestDifference(out, expected), 1e-6) << slotTarget;
    }
}
