#include "modulation/MidiModSource.h"

#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Input = MidiModSource::MidiInput;
using Curve = MidiModSource::ResponseCurve;

struct Played : GraphFixture {
    MidiModSource::Cache cache;
    MidiModSource source{environment, cache};

    float settled() { return render(source, 44100).back(); }
};

}  // namespace

TEST(MidiModSource, FollowsTheInputItIsSetTo)
{
    struct Row {
        Input input;
        double atRest;
        std::function<void(MidiModSource::Cache&)> message;
        double then;
    };
    const Row rows[] = {
        {Input::ModWheel, 0.0, [](auto& cache) { cache.modWheel(0.75f); }, 0.75},
        {Input::PitchBend, 0.0, [](auto& cache) { cache.pitchBend(-0.25f); }, -0.5},
        {Input::Velocity, 0.0, [](auto& cache) { cache.noteOn(60, 0.25f); }, -0.5},
        {Input::Aftertouch, 0.0, [](auto& cache) { cache.channelPressure(0.5f); }, 0.5},
        {Input::Aftertouch, 0.0, [](auto& cache) { cache.polyPressure(60, 0.25f); }, 0.25},
        {Input::KeyboardTrack, 0.0, [](auto& cache) { cache.noteOn(60, 0.25f); }, 0.1},
        {Input::KeyboardTrack, 0.0, [](auto& cache) { cache.noteOn(127, 1.0f); }, 127.0 / 120.0 - 0.4},
        {Input::KeyboardTrack, 0.0, [](auto& cache) { cache.noteOff(127, 1.0f); }, 0.0},
        {Input::Controller, 0.0, [](auto& cache) { cache.controller(7, 32, 0.25f); }, 0.25},
        {Input::Controller, 0.0, [](auto& cache) { cache.controller(8, 32, 0.25f); }, 0.0},
        {Input::ModWheel, 0.0, [](auto& cache) { cache.controller(1, 32, 0.25f); }, 0.0},
    };
    for (const Row& row : rows) {
        Played before, after;  // the message before the choice, and after it
        row.message(before.cache);
        for (Played* played : {&before, &after}) {
            played->source.controller.assign(7);
            played->source.input.assign(row.input);
        }
        EXPECT_NEAR(after.settled(), row.atRest, 1e-6);
        row.message(after.cache);
        EXPECT_NEAR(before.settled(), row.then, 1e-6);
        EXPECT_NEAR(after.settled(), row.then, 1e-6);
    }
}

TEST(MidiModSource, BendsTheValue)
{
    // 36 dB of range: a straight piece up to 0.1, and 10^(1.8 (x - 1)) from there on.
    const auto exponential = [](double x) {
        return x > 0.1 ? std::pow(10.0, 1.8 * (x - 1.0)) : x * std::pow(10.0, -1.62) / 0.1;
    };
    const auto mirrored = [](const std::function<double(double)>& f) {
        return [f](double x) { return x < 0.0 ? -f(-x) : f(x); };
    };
    const std::function<double(double)> curves[] = {
        [](double x) { return x; },
        mirrored(exponential),
        mirrored([](double x) { return std::log1p(10.0 * x) / std::log(11.0); }),
        mirrored([](double x) { return x * x; }),
        mirrored([](double x) { return std::sqrt(x); }),
        [](double x) { return x == 0.0 ? 0.0 : 0.5 * (1.0 - std::cos(M_PI * x)) * (x < 0.0 ? -1.0 : 1.0); },
    };
    for (std::size_t curve = 0; curve < std::size(curves); ++curve) {
        for (const double x : {-1.0, -0.5, -0.25, -0.05, 0.0, 0.05, 0.11, 0.3, 0.5, 1.0}) {
            Played played;
            played.source.input.assign(Input::PitchBend);
            played.source.responseCurve.assign(static_cast<Curve>(curve));
            played.cache.pitchBend(static_cast<float>(0.5 * x));
            const double expected = curves[curve](x);
            EXPECT_NEAR(played.settled(), expected, 2e-6) << curve << " of " << x;
            // The key's place on the curve is measured from key 48's.
            played.source.input.assign(Input::KeyboardTrack);
            played.cache.noteOn(96, 1.0f);
            EXPECT_NEAR(played.settled(), curves[curve](0.8) - curves[curve](0.4), 2e-6) << curve;
        }
    }
}

TEST(MidiModSource, ChangesOfItsSettingsTakeTheRampOfTheValue)
{
    Played played;
    played.cache.modWheel(0.5f);
    EXPECT_EQ(played.settled(), 0.5f);
    EXPECT_EQ(&played.source.currentBlock(), &played.source.pull(1));
    EXPECT_TRUE(played.source.currentBlock().isConstant());
    played.source.responseCurve.assign(Curve::Square);
    const auto out = played.render(played.source, 2000);
    EXPECT_EQ(out[0], 0.5f);
    // A step of half of what the ramp is measured against takes the short time, 20 ms.
    EXPECT_NEAR(out[441], 0.375f, 1e-4);
    EXPECT_EQ(out[882], 0.25f);
    // Controller 1 is the mod wheel too.
    played.cache.controller(1, 64, 0.5f);
    played.source.controller.assign(1);
    played.source.input.assign(Input::Controller);
    EXPECT_EQ(played.settled(), 0.25f);
    played.environment.reset(wave::Environment::Reset::Everything);
    EXPECT_EQ(played.settled(), 0.25f);
}

TEST(MidiModSource, TakesOneKeyOnlyWhereItIsToldTo)
{
    Played played;
    played.source.input.assign(Input::Aftertouch);
    played.cache.keyFilter = 60;
    played.cache.polyPressure(61, 0.7f);
    EXPECT_EQ(played.settled(), 0.0f);
    played.cache.polyPressure(60, 0.7f);
    EXPECT_EQ(played.settled(), 0.7f);
    played.source.input.assign(Input::Velocity);
    played.cache.noteOn(61, 1.0f);
    EXPECT_EQ(played.settled(), 0.0f);
}

TEST(MidiModSource, ShowsWhereItIsHeadingThoughNobodyReadsIt)
{
    struct Row {
        Input input;
        float level, shown;
    };
    for (const auto& [input, level, shown] :
         {Row{Input::ModWheel, 1.0f, 0.5f}, Row{Input::PitchBend, 1.0f, 0.5f},
          Row{Input::Velocity, 1.0f, 0.25f}, Row{Input::ModWheel, -2.0f, 1.0f}}) {
        Played played;
        played.source.input.assign(input);
        played.source.level.parameter().setValue(level, 0.0f);
        played.cache.modWheel(0.5f);
        played.cache.pitchBend(-0.25f);
        played.cache.noteOn(60, 0.25f);
        EXPECT_FLOAT_EQ(played.source.displayValue(), shown);
        EXPECT_FLOAT_EQ(played.settled(), played.source.currentValue());
    }
}
