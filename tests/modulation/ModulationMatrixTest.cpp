#include "modulation/ModulationMatrix.h"

#include "MatrixFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace {

using F = MatrixFixture;

TEST(ModulationMatrix, AddsSourceTimesLevelTimesDepth)
{
    struct Row {
        int target;
        float base;
        int source;
        float value, level;
        bool inverted;
        float expected;
    };
    for (const auto& [target, base, source, value, level, inverted, expected] : {
             Row{F::Gain, 0.25f, F::Hor, 0.5f, 0.5f, false, 0.5f},
             Row{F::Gain, 0.5f, F::Hor, 0.5f, 0.5f, true, 0.25f},
             Row{F::Gain, 0.25f, F::Follower, 0.5f, 0.25f, false, 0.5f},  // depth 2
             Row{F::Time, 100.0f, F::Ver, 0.5f, 0.25f, false, 724.375f},  // 100 + 4995 / 8
             Row{F::Time, 100.0f, F::FirstXLFO, 0.5f, 0.25f, false, 162.5f},
             Row{F::Pan, 0.0f, F::Hor, -0.5f, 0.5f, false, -0.5f},
             Row{F::Gain, 0.5f, F::Hor, 1.0f, 1.0f, false, 1.0f},        // the upper end
             Row{F::Time, 100.0f, F::Hor, -1.0f, 1.0f, false, 5.0f},     // the lower end
             Row{F::Gain, 0.0f, F::Follower, 3.0f, 0.1f, false, 0.6f},   // a source may exceed 1
             Row{F::Gain, 0.75f, F::Missing, 1.0f, 1.0f, false, 0.75f},  // no signal of that name
         }) {
        F fixture;
        fixture.matrix->target(target).setParameterSignal(base);
        fixture.values[source] = value;
        fixture.connect(3, source, target, level);
        fixture.matrix->setSlotInverted(3, inverted);
        EXPECT_FLOAT_EQ(fixture.settled(target), expected) << target << " by " << source;
    }
}

TEST(ModulationMatrix, ShowsTheBaseBlockWhereNoSlotIsActive)
{
    F fixture;
    ModulationMatrix::Target& gain = fixture.matrix->target(F::Gain);
    wave::Producer& shown = *fixture.matrix->producerForTarget(F::Gain);
    fixture.settled(F::Gain);
    EXPECT_EQ(&shown.currentBlock(), &gain.forwarder.currentBlock());
    fixture.connect(0, F::Hor, F::Gain, 0.5f);
    fixture.matrix->setSlotBypassed(0, true);
    fixture.settled(F::Gain);
    EXPECT_EQ(&shown.currentBlock(), &gain.forwarder.currentBlock());
    EXPECT_TRUE(fixture.signals[F::Hor]->runs.empty());  // nor is the source asked
}

TEST(ModulationMatrix, StaysConstantWhileAllInputsAreAndFollowsEverySampleOtherwise)
{
    F fixture;
    FunctionProducer moving(fixture.environment,
                            [](std::uint64_t t) { return std::sin(0.01f * static_cast<float>(t)); });
    fixture.matrix->setSource(F::Ver, &moving);
    fixture.setSource(F::Hor, 0.5f);
    fixture.matrix->target(F::Gain).setParameterSignal(0.25f);
    fixture.connect(0, F::Hor, F::Gain, 0.25f);
    wave::Producer& shown = *fixture.matrix->producerForTarget(F::Gain);
    for (const float sample : fixture.render(F::Gain, 300))
        ASSERT_FLOAT_EQ(sample, 0.375f);
    EXPECT_TRUE(shown.currentBlock().isConstant());

    fixture.connect(1, F::Ver, F::Gain, 0.25f);
    const std::vector<float> out = fixture.render(F::Gain, 300);
    for (std::size_t i = 0; i < out.size(); ++i)
        ASSERT_NEAR(out[i], 0.375f + 0.25f * std::sin(0.01f * static_cast<float>(300 + i)), 1e-6);
    EXPECT_FALSE(shown.currentBlock().isConstant());

    fixture.matrix->setSlotSource(1, -1);
    for (const float sample : fixture.render(F::Gain, 300))
        ASSERT_FLOAT_EQ(sample, 0.375f);
}

TEST(ModulationMatrix, ClampsOnceBehindAllSlots)
{
    F fixture;
    fixture.setSource(F::Hor, 1.0f);
    fixture.matrix->target(F::Gain).setParameterSignal(0.5f);
    fixture.connect(0, F::Hor, F::Gain, 0.9f);
    EXPECT_FLOAT_EQ(fixture.settled(F::Gain), 1.0f);
    fixture.connect(1, F::Hor, F::Gain, 0.8f);
    fixture.matrix->setSlotInverted(1, true);
    EXPECT_FLOAT_EQ(fixture.settled(F::Gain), 0.6f);
    for (int slot = 2; slot < F::slots; ++slot)  // all on one target
        fixture.connect(slot, F::Hor, F::Gain, 0.01f);
    EXPECT_NEAR(fixture.settled(F::Gain), 0.6f + 0.22f, 1e-6);
}

TEST(ModulationMatrix, LetsASourceSayHowFarAnotherReaches)
{
    struct Row {
        float level, ownValue, modulatorLevel, modulator;
        bool inverted;
        float expected;  // (level + modulatorLevel modulator), within 0..1, times the source
    };
    for (const auto& [level, ownValue, modulatorLevel, modulator, inverted, expected] : {
             Row{0.2f, 1.0f, 0.4f, 0.5f, false, 0.4f},
             Row{0.2f, 0.5f, 0.4f, -0.25f, false, 0.05f},
             Row{0.2f, 1.0f, 0.4f, -1.0f, false, 0.0f},  // the level ends at 0
             Row{0.8f, 0.5f, 1.0f, 1.0f, false, 0.5f},   // and at 1
             Row{0.2f, 1.0f, 0.4f, 0.5f, true, -0.4f},
         }) {
        // On a wide target the chain works in its units: 4995 ms.
        for (const auto& [target, base, depth] :
             {std::tuple{F::Gain, 0.5f, 1.0f}, std::tuple{F::Time, 2502.5f, 4995.0f}}) {
            F fixture;
            fixture.setSource(F::Hor, ownValue);
            fixture.setSource(F::Ver, modulator);
            fixture.matrix->target(target).setParameterSignal(base);
            fixture.connect(1, F::Ver, F::levelOf(0), modulatorLevel);
            fixture.connect(0, F::Hor, target, level);
            fixture.matrix->setSlotInverted(0, inverted);
            EXPECT_NEAR(fixture.settled(target), base + depth * expected, 2e-6 * depth);
        }
    }
}

TEST(ModulationMatrix, ALevelRampsButAnInversionActsAtOnce)
{
    F fixture;
    fixture.setSource(F::Hor, 1.0f);
    fixture.matrix->target(F::Gain).setParameterSignal(0.5f);
    fixture.connect(0, F::Hor, F::Gain, 0.1f);
    fixture.settled(F::Gain);
    fixture.matrix->setSlotLevel(0, 0.5f);
    // More than 30 % of the range: a straight line of 20 ms, which are 882 samples.
    const std::vector<float> rise = fixture.render(F::Gain, 1000);
    for (std::size_t i = 0; i < 882; ++i)
        ASSERT_NEAR(rise[i], 0.6 + 0.4 * static_cast<double>(i) / 882.0, 1e-5);
    EXPECT_FLOAT_EQ(rise.back(), 1.0f);
    fixture.matrix->setSlotInverted(0, true);
    EXPECT_FLOAT_EQ(fixture.render(F::Gain, 1)[0], 0.0f);
    EXPECT_EQ(fixture.matrix->target(F::levelOf(0)).lower(), -1.0f);
    EXPECT_EQ(fixture.matrix->target(F::levelOf(0)).upper(), 0.0f);

    // In the middle of a ramp, too.
    fixture.matrix->setSlotLevel(0, 0.0f);
    fixture.render(F::Gain, 441);
    fixture.matrix->setSlotInverted(0, false);
    EXPECT_FLOAT_EQ(fixture.render(F::Gain, 1)[0], 0.5f);
}

TEST(ModulationMatrix, TakesOnTheDepthsOfASourcesNewKind)
{
    F fixture;
    fixture.setSource(F::FirstXLFO, 0.5f);
    fixture.setSource(F::Ver, 1.0f);
    fixture.matrix->target(F::Time).setParameterSignal(100.0f);
    fixture.connect(0, F::FirstXLFO, F::Time, 0.5f);
    fixture.connect(1, F::Ver, F::levelOf(0), 0.25f);
    EXPECT_FLOAT_EQ(fixture.settled(F::Time), 100.0f + 0.5f * 0.75f * 500.0f);
    fixture.matrix->setSourceKind(F::FirstXLFO, ModulationSource::SnappedXLFO);
    EXPECT_FLOAT_EQ(fixture.render(F::Time, 1)[0], 100.0f + 0.5f * 0.75f * 50.0f);
}

TEST(ModulationMatrix, HoldsOffASlotOnWhatItsSourceDependsOn)
{
    F fixture;
    fixture.connect(0, F::FirstXLFO, F::FirstRate, 1.0f);
    EXPECT_FALSE(fixture.matrix->slot(0).isActive());
    fixture.connect(1, F::Hor, F::levelOf(1), 1.0f);
    EXPECT_FALSE(fixture.matrix->slot(1).isActive());
    fixture.setSource(F::FirstXLFO, 1.0f);
    EXPECT_FLOAT_EQ(fixture.settled(F::FirstRate), 0.0f);

    fixture.connect(2, F::FirstXLFO, F::SecondRate, 1.0f);
    fixture.connect(3, F::SecondXLFO, F::FirstRate, 1.0f);  // closes the circle
    EXPECT_TRUE(fixture.matrix->slot(2).isActive());
    EXPECT_FALSE(fixture.matrix->slot(3).isActive());
    fixture.matrix->setSlotSource(2, F::Hor);
    EXPECT_TRUE(fixture.matrix->slot(3).isActive());
}

TEST(ModulationMatrix, RevivesTheSecondOfTwoSlotsOnEachOthersLevelOnceTheFirstIsGone)
{
    F fixture;
    fixture.setSource(F::Hor, 1.0f);
    fixture.setSource(F::Ver, 1.0f);
    fixture.connect(0, F::Hor, F::levelOf(1), 0.25f);
    fixture.connect(1, F::Ver, F::levelOf(0), 0.5f);
    EXPECT_TRUE(fixture.matrix->slot(0).isActive());
    EXPECT_FALSE(fixture.matrix->slot(1).isActive());
    EXPECT_FLOAT_EQ(fixture.settled(F::levelOf(0)), 0.25f);

    fixture.matrix->setSlotTarget(0, F::Gain);
    EXPECT_TRUE(fixture.matrix->slot(1).isActive());
    EXPECT_FLOAT_EQ(fixture.settled(F::Gain), 0.75f);
}

TEST(ModulationMatrix, SeesBypassedSlotsWhenItLooksForCircles)
{
    F fixture;
    fixture.matrix->setSlotBypassed(0, true);
    fixture.connect(0, F::Hor, F::levelOf(1), 0.5f);
    fixture.connect(1, F::Ver, F::levelOf(2), 0.5f);
    fixture.connect(2, F::Hor, F::levelOf(0), 0.5f);
    EXPECT_FALSE(fixture.matrix->slot(0).isActive());
    EXPECT_TRUE(fixture.matrix->slot(1).isActive());
    EXPECT_FALSE(fixture.matrix->slot(2).isActive());
    fixture.matrix->setSlotBypassed(0, false);  // the circle is still there
    EXPECT_FALSE(fixture.matrix->slot(0).isActive());
    fixture.matrix->setSlotTarget(1, F::Gain);
    EXPECT_TRUE(fixture.matrix->slot(0).isActive());
    EXPECT_TRUE(fixture.matrix->slot(2).isActive());
}

// Whatever is connected in whatever order: what is active must never depend on itself, or a pull would not
// end.
TEST(ModulationMatrix, NeverPullsItselfWhateverIsConnected)
{
    F fixture;
    // As a source reads its own parameters.
    const auto reading = [&](int target) {
        return [&fixture, target](std::uint64_t) {
            return fixture.matrix->producerForTarget(target)->pull(1)[0];
        };
    };
    FunctionProducer first(fixture.environment, reading(F::FirstRate));
    FunctionProducer second(fixture.environment, reading(F::SecondRate));
    fixture.matrix->setSource(F::FirstXLFO, &first);
    fixture.matrix->setSource(F::SecondXLFO, &second);
    const std::vector<float> random = signals::noise(40000, 40);
    const auto choice = [&](std::size_t i, int count) {
        return static_cast<int>((random[i] * 0.5f + 0.5f) * static_cast<float>(count)) - 1;
    };
    for (std::size_t i = 0; i + 4 < random.size(); i += 4) {
        const int slot = choice(i, F::slots) + 1;
        if (choice(i + 1, 3) == 0)
            fixture.matrix->setSlotBypassed(slot, !fixture.matrix->slot(slot).bypassed);
        else if (choice(i + 1, 2) == 0)
            fixture.matrix->setSlotSource(slot, choice(i + 2, F::Missing + 1));
        else
            fixture.matrix->setSlotTarget(slot, choice(i + 3, F::FirstLevel + F::slots + 1));
        fixture.environment.nextGeneration();
        for (int target = 0; target < F::FirstLevel + F::slots; ++target)
            fixture.matrix->producerForTarget(target)->pull(1);
        fixture.environment.run(1, false);
    }
}

}  // namespace
