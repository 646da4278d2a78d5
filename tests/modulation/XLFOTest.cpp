#include "XLFOFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace {

using Shape = XLFOFixture::Shape;
using enum XLFO::GlideCurve;

constexpr double rate = 44100.0;

const Shape fourCurves = {
    {{-1.0, 0.5, Linear}, {0.4, 0.75, Square}, {-0.3, 0.9, SquareRoot}, {0.9, 0.6, Sine}}};
const Shape fiveSteps = {{{0.1, 0.2}, {0.7, 1.0, Sine}, {-0.8, 0.5}, {1.0, 0.0}, {-0.2, 0.3, Square}}, 0.3f};

/// The values in force, one for each stretch of equal samples. For steps without glide.
std::vector<float> valuesOf(const std::vector<float>& out)
{
    std::vector<float> values;
    for (const float x : out)
        if (values.empty() || x != values.back())
            values.push_back(x);
    return values;
}

}  // namespace

TEST(XLFO, PlaysItsStepsWithTheirGlides)
{
    Shape leaning = fourCurves, glued = fourCurves, cut = fiveSteps;
    leaning.balance = 0.13f;
    glued.addedGlide = 0.45;  // beyond a whole step for some
    cut.addedGlide = -0.35;   // below none for some
    struct Row {
        Shape shape;
        float hertz;
        int block;
    };
    for (const auto& [shape, hertz, block] :
         {Row{fourCurves, 3.0f, 128}, Row{leaning, 7.1f, 128}, Row{glued, 41.7f, 37},
          Row{fiveSteps, 5.3f, 64}, Row{cut, 331.1f, 1},
          Row{fiveSteps, 2503.3f, 128},  // where no glide is shorter than a quarter of its step
          Row{fourCurves, 4987.9f, 19}}) {
        XLFOFixture fixture(shape);
        fixture.hertz = hertz;
        const std::vector<float> out = fixture.play(30000, block);
        for (std::size_t i = 0; i < out.size(); ++i)
            ASSERT_NEAR(out[i], shape.at(static_cast<double>(i) * hertz / rate, hertz), 1e-5)
                << hertz << " Hz, sample " << i;
    }
}

TEST(XLFO, IsHalfwayThroughItsMiddleStepAtTheBalancePoint)
{
    Shape shape = fiveSteps;
    shape.steps[2].glide = 1.0;
    XLFOFixture fixture(shape);
    fixture.hertz = 0.0f;
    fixture.shift = 0.3f;
    EXPECT_NEAR(fixture.play(1)[0], (-0.8 + 1.0) / 2.0, 1e-6);
    fixture.shift = 0.3f + 0.7f / 5.0f - 1e-6f;  // the second half of the step has the wider half's width
    EXPECT_NEAR(fixture.play(1)[0], 1.0, 1e-4);
    fixture.shift = 0.3f - 0.3f / 5.0f + 1e-6f;
    EXPECT_NEAR(fixture.play(1)[0], -0.8, 1e-4);
}

TEST(XLFO, ReadsModulatedSignalsSampleBySample)
{
    // A phase that goes to and fro, by more than a cycle and below 0, and jumps.
    const auto offsetAt = [](std::uint64_t t) {
        const float jump = t / 3001 % 2 ? 7.36f : 0.0f;
        return 1.4f * std::sin(static_cast<float>(t) * 0.003f) - jump;
    };
    const auto hertzAt = [](std::uint64_t t) {
        return 40.0f + 35.0f * std::sin(static_cast<float>(t) * 0.001f);
    };
    const auto glideAt = [](std::uint64_t t) { return 0.4f * std::sin(static_cast<float>(t) * 0.0007f); };
    for (const Shape& shape : {fourCurves, fiveSteps}) {
        XLFOFixture fixture(shape);
        FunctionProducer offset(fixture.environment, offsetAt), hertz(fixture.environment, hertzAt),
            glide(fixture.environment, glideAt);
        fixture.xlfo.phaseOffset.connect(&offset);
        fixture.xlfo.frequency.connect(&hertz);
        fixture.xlfo.glide.connect(&glide);
        const std::vector<float> out = fixture.play(40000, 101);
        double cycles = 0.0;
        int differences = 0;
        for (std::uint64_t t = 0; t < out.size(); ++t) {
            Shape moved = shape;
            moved.addedGlide = glideAt(t);
            const double expected = moved.at(cycles + static_cast<double>(offsetAt(t)), hertzAt(t));
            differences += std::fabs(out[t] - expected) > 2e-5;
            cycles += static_cast<double>(hertzAt(t)) / rate;
        }
        EXPECT_EQ(differences, 0);
    }
}

TEST(XLFO, HoldsASingleStep)
{
    XLFOFixture fixture({{{0.3, 1.0}}});
    fixture.hertz = 4000.0f;
    for (const float x : fixture.play(1000))
        ASSERT_EQ(x, 0.3f);
}

TEST(XLFO, SnapsToTwelfths)
{
    XLFOFixture fixture({{{0.0, 0.0}}});
    fixture.xlfo.step(0).snap.assign(true);
    for (int percent = -100; percent <= 100; ++percent) {
        const double value = percent / 100.0;
        fixture.xlfo.step(0).value.assign(static_cast<float>(value));
        EXPECT_NEAR(fixture.play(1)[0], std::floor(value * 12.0 + 0.5) / 12.0, 1e-6) << value;
    }
}

// Random steps.

TEST(XLFO, DrawsOtherValuesInEachCycleThatStayApart)
{
    for (const int steps : {1, 2, 3, 16})
        for (const auto range : {XLFO::RandomRange::Bipolar, XLFO::RandomRange::Unipolar}) {
            XLFOFixture fixture({std::vector<Shape::Step>(static_cast<std::size_t>(steps))});
            fixture.xlfo.randomRange.assign(range);
            for (int i = 0; i < steps; ++i)
                fixture.xlfo.step(i).random.assign(true);
            fixture.xlfo.reset();
            // 441 samples a step, none of them near its end, where even this one glides.
            fixture.hertz = 100.0f / static_cast<float>(steps);
            fixture.shift = 0.5f / 441.0f / static_cast<float>(steps);
            const auto values = valuesOf(fixture.play(441 * 500));
            // Each step its own value: some 500 of them, and hardly one twice.
            EXPECT_NEAR(static_cast<double>(values.size()), 500.0, 2.0) << steps;
            EXPECT_GT(std::set<float>(values.begin(), values.end()).size(), 430u);
            const auto [low, high] = std::minmax_element(values.begin(), values.end());
            EXPECT_GE(*low, range == XLFO::RandomRange::Bipolar ? -1.0f : 0.0f);
            EXPECT_LE(*high, 1.0f);
            EXPECT_GT(*high - *low, range == XLFO::RandomRange::Bipolar ? 1.8f : 0.9f);
            for (std::size_t i = 1; i < values.size(); ++i)
                ASSERT_GE(std::fabs(values[i] - values[i - 1]), 0.2f - 1e-6f);
        }
}

TEST(XLFO, DrawsTheSameHoweverBlocksAreCut)
{
    // With 44100 / 256 Hz each of the two steps ends with a block of 128.
    const auto playRandom = [](int block, std::uint32_t seed) {
        XLFOFixture fixture({{{0.0, 0.5}, {0.0, 0.2}}});
        XLFO xlfo(fixture.environment, seed);
        xlfo.numSteps.assign(2);
        xlfo.frequency.connect(&fixture.frequency);
        fixture.hertz = 172.265625f;
        for (int i = 0; i < 2; ++i)
            xlfo.step(i).random.assign(true);
        return fixture.render(xlfo, 12800, block);
    };
    const auto whole = playRandom(128, 5);
    EXPECT_EQ(valuesOf(whole).size(), 100u);
    EXPECT_EQ(whole, playRandom(1, 5));
    EXPECT_EQ(whole, playRandom(37, 5));
    EXPECT_NE(whole, playRandom(128, 6));
}

TEST(XLFO, DrawsOtherValuesThanItsNeighbour)
{
    XLFOFixture fixture;
    XLFO first(fixture.environment), second(fixture.environment);
    for (XLFO* xlfo : {&first, &second}) {
        xlfo->numSteps.assign(1);
        xlfo->step(0).random.assign(true);
    }
    EXPECT_NE(fixture.render(first, 1), fixture.render(second, 1));
}

TEST(XLFO, GlidesFromOneRandomValueToTheNextWithASingleStep)
{
    XLFOFixture fixture({{{0.0, 1.0}}});
    fixture.xlfo.step(0).random.assign(true);
    fixture.hertz = 44.1f;  // a cycle of 1000 samples
    const auto out = fixture.play(20000);
    EXPECT_LT(signals::largestStep(out, 0, out.size()), 2.0 / 1000.0 + 1e-5);
    for (std::size_t cycle = 0; cycle + 2000 < out.size(); cycle += 1000)
        EXPECT_NEAR(out[cycle + 500], (out[cycle + 1] + out[cycle + 999]) / 2.0f, 1e-3f);
}

// Changes on the way.

TEST(XLFO, KeepsItsPlaceInTheShapeWhenTheBalanceMoves)
{
    XLFOFixture fixture;
    fixture.hertz = 4.41f;  // a cycle of 10000 samples
    fixture.play(2500);     // phase 0.25
    fixture.xlfo.balance.parameter().setValue(0.25f, 0.0f);
    EXPECT_NEAR(fixture.play(1)[0], 0.0f, 1e-3f);
    // From phase 0.125 it is 1250 samples to the top.
    const auto out = fixture.play(2000);
    EXPECT_NEAR(static_cast<double>(std::max_element(out.begin(), out.end()) - out.begin()), 1249.0, 1.0);
    fixture.play(2999);  // midway down, at phase 0.625
    EXPECT_NEAR(fixture.play(1)[0], 0.0f, 1e-3f);
    fixture.xlfo.balance.parameter().setValue(0.9f, 0.0f);
    EXPECT_NEAR(fixture.play(1)[0], 0.0f, 4e-3f);
}

TEST(XLFO, TakesOnAnotherNumberOfStepsWhereItIs)
{
    XLFOFixture fixture({std::vector<Shape::Step>(16, {0.0, 1.0})});
    for (int i = 0; i < 16; ++i)
        fixture.xlfo.step(i).value.assign(static_cast<float>(i) / 16.0f);
    fixture.hertz = 4.41f;
    fixture.play(9500);  // phase 0.95, in the last step
    fixture.xlfo.numSteps.assign(3);
    EXPECT_NEAR(fixture.play(1)[0], 2.0 / 16.0 * (1.0 - 0.85), 1e-3);  // 0.85 of the way to the first
    fixture.play(999);                                                 // phase 0.05
    fixture.xlfo.numSteps.assign(5);
    EXPECT_NEAR(fixture.play(1)[0], 0.25 / 16.0, 1e-3);
}

TEST(XLFO, StaysANumberAndGoesOnAfterSignalsThatAreNone)
{
    for (const int broken : {0, 1, 2}) {
        XLFOFixture fixture;
        const auto signal = [&](int which, float normal) {
            return [=](std::uint64_t t) {
                const bool bad = which == broken && t >= 300 && t < 900 && t % 5 != 0;
                return bad ? std::numeric_limits<float>::quiet_NaN() : normal;
            };
        };
        FunctionProducer frequency(fixture.environment, signal(0, 441.0f)),
            glide(fixture.environment, signal(1, 0.0f)), offset(fixture.environment, signal(2, 0.25f));
        fixture.xlfo.frequency.connect(&frequency);
        fixture.xlfo.glide.connect(&glide);
        fixture.xlfo.phaseOffset.connect(&offset);
        const auto out = fixture.play(2000);
        for (const float x : out)
            ASSERT_TRUE(std::isfinite(x));
        EXPECT_NEAR(signals::meanFrequency(out, 1000, 2000, rate), 441.0, 0.5);
    }
}

TEST(XLFO, TakesAPhaseThatIsAHairBelowZero)
{
    XLFOFixture fixture;  // 1 - 1e-20 is 1, which is in no step
    fixture.shift = -1e-20f;
    fixture.hertz = 44.1f;
    const auto out = fixture.play(1000);
    for (std::size_t i = 0; i < out.size(); ++i)
        ASSERT_NEAR(out[i], fixture.shape.at(static_cast<double>(i) / 1000.0), 1e-5);
}

TEST(XLFO, KeepsItsPhaseWhereNobodyReadsIt)
{
    for (const bool moving : {false, true}) {
        XLFOFixture read, unread;
        for (XLFOFixture* fixture : {&read, &unread}) {
            fixture->hertz = 3.7f;
            fixture->shift = 0.2f;
        }
        FunctionProducer idle(unread.environment, [](std::uint64_t) { return 0.0f; });
        const auto sweep = [&](XLFOFixture& fixture) {
            return [&fixture, moving](std::uint64_t now) {
                if (moving)
                    fixture.hertz = 3.7f + static_cast<float>(now) * 1e-5f;
            };
        };
        read.render(read.xlfo, 88200, 128, sweep(read));
        unread.render(idle, 88200, 128, sweep(unread));
        EXPECT_LT(signals::largestDifference(read.play(3000), unread.play(3000)), 2e-4);
    }
}

TEST(XLFO, IsSilentWhileDisabledAndStartsOverAfter)
{
    XLFOFixture fixture;
    fixture.hertz = 100.0f;
    fixture.play(300);
    fixture.xlfo.setEnabled(false);
    fixture.frequency.runs.clear();
    for (const float x : fixture.play(1000))
        ASSERT_EQ(x, 0.0f);
    EXPECT_TRUE(fixture.frequency.runs.empty());
    fixture.xlfo.setEnabled(true);
    EXPECT_EQ(fixture.play(1)[0], -1.0f);
}

TEST(XLFO, IsRetriggeredToItsOffset)
{
    XLFOFixture fixture;
    fixture.hertz = 4.41f;
    fixture.shift = 0.125f;
    fixture.play(3333);
    fixture.xlfo.retrigger();
    const auto out = fixture.play(100);
    for (std::size_t i = 0; i < out.size(); ++i)
        ASSERT_NEAR(out[i], fixture.shape.at(0.125 + static_cast<double>(i) / 10000.0), 1e-5);
}

TEST(XLFO, DrawsAnewWhenRetriggered)
{
    XLFOFixture fixture({{{0.0, 0.0}, {0.5, 0.0}}});
    fixture.xlfo.step(0).random.assign(true);
    std::set<float> drawn;
    for (int i = 0; i < 20; ++i) {
        drawn.insert(fixture.play(100)[0]);
        fixture.xlfo.retrigger();
    }
    EXPECT_GT(drawn.size(), 15u);
}

// What is shown.

TEST(XLFO, ShowsItsOutputWithinItsSteps)
{
    struct Row {
        double first, second;
        float level, hertz, phase, shown;
    };
    for (const auto& [first, second, level, hertz, phase, shown] : {
             Row{-1.0, 1.0, 1.0f, 1.0f, 0.125f, 0.25f},  // a quarter of the way up
             Row{-0.5, 1.0, 1.0f, 1.0f, 0.25f, 0.5f},    // halfway
             Row{-0.8, 0.2, 1.0f, 1.0f, 0.5f, 0.8f},     // the top shows how far the larger end reaches
             Row{0.2, 0.6, 1.0f, 1.0f, 0.25f, 0.4f},     // one sign: the size
             Row{-0.2, -0.6, 0.5f, 1.0f, 0.25f, 0.2f},
             Row{0.2, 0.6, 1.0f, 15.5f, 0.0f, 0.4f},  // too fast: the middle
             Row{0.2, 0.6, 1.0f, 14.5f, 0.0f, 0.2f},
         }) {
        XLFOFixture fixture({{{first, 1.0}, {second, 1.0}}});
        fixture.xlfo.level.assign(level);
        fixture.hertz = hertz;
        fixture.shift = phase;
        FunctionProducer idle(fixture.environment, [](std::uint64_t) { return 0.0f; });
        fixture.render(idle, 1);
        EXPECT_NEAR(fixture.xlfo.displayValue(), shown, 1e-5) << first << ' ' << second << ' ' << hertz;
    }
}

TEST(XLFO, TellsOfSecondHalvesThatLastLongEnoughToBeSeen)
{
    for (const auto& [hertz, events] : {std::pair{2.0f, 16}, {7.5f, 60}, {8.5f, 0}}) {
        XLFOFixture fixture;
        int fired = 0;
        fixture.xlfo.cycleEvent.setHandler(NotifyEvent::handler([&fired](void*) { ++fired; }));
        fixture.hertz = hertz;
        fixture.play(4 * 44100 + 100);
        EXPECT_NEAR(fired, events, events ? 1 : 0) << hertz;
    }
}
