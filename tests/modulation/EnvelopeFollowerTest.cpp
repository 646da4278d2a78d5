#include "modulation/EnvelopeFollower.h"

#include "modulation/Trigger.h"

#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();

float gain(double db) { return static_cast<float>(std::pow(10.0, db / 20.0)); }

struct Follower : GraphFixture {
    Follower(std::function<float(std::uint64_t)> sampleAt, float attack, float release, float rate = 44100.0f)
        : input(environment, std::move(sampleAt))
    {
        environment.setSampleRate(rate);
        follower.emplace(environment);
        follower->input = &input;
        follower->attack.parameter().setValue(attack, 0.0f);
        follower->release.parameter().setValue(release, 0.0f);
    }
    std::vector<float> play(int samples, int blockSize = 128)
    {
        return render(*follower, samples, blockSize);
    }

    FunctionProducer input;
    std::optional<EnvelopeFollower> follower;
};

}  // namespace

TEST(EnvelopeFollower, ReachesNineTenthsOfAStepInItsTimes)
{
    struct Row {
        float attack, release, rate;
    };
    for (const auto& [attack, release, rate] :
         {Row{0.01f, 0.1f, 44100.0f}, Row{0.5f, 0.05f, 48000.0f}, Row{0.0005f, 0.3f, 96000.0f}}) {
        const int loud = 2 * static_cast<int>(rate);
        Follower played(
            [loud](std::uint64_t t) { return t < static_cast<std::uint64_t>(loud) ? -gain(-12.0) : 0.0f; },
            attack, release, rate);
        const auto out = played.play(2 * loud);
        // -12 dB lies 48 of 60 dB above the floor. The level starts 180 dB below that.
        const auto risen = static_cast<std::size_t>(std::lround(attack * rate));
        EXPECT_NEAR(out[risen - 1], 0.8 - 0.1 * (0.8 + 3.0), 2e-4);
        EXPECT_NEAR(out[static_cast<std::size_t>(loud) - 1], 0.8, 1e-3);
        const auto fallen =
            static_cast<std::size_t>(loud) + static_cast<std::size_t>(std::lround(release * rate));
        EXPECT_NEAR(out[fallen - 1], 0.1 * out[static_cast<std::size_t>(loud) - 1], 2e-4);
    }
}

TEST(EnvelopeFollower, IsLinearInDecibels)
{
    struct Row {
        float sample;
        double output;
    };
    for (const auto& [sample, output] :
         {Row{1.0f, 1.0}, Row{gain(-30.0), 0.5}, Row{-gain(-59.0), 1.0 / 60.0}, Row{gain(-60.0), 0.0},
          Row{gain(-60.1), 0.0}, Row{1e-20f, 0.0}, Row{gain(12.0), 1.2}, Row{notANumber, 0.0}}) {
        Follower played([x = sample](std::uint64_t) { return x; }, 0.0005f, 0.0005f);
        EXPECT_NEAR(played.play(44100).back(), output, 1e-5) << sample;
        EXPECT_TRUE(played.follower->currentBlock().isConstant()) << sample;  // it has come to rest
    }
    for (int step = 0; step < 130; ++step) {
        const double db = -59.9 + 0.77 * step;
        Follower played([x = gain(db)](std::uint64_t) { return x; }, 0.0005f, 0.0005f);
        EXPECT_NEAR(played.play(1000).back(), 1.0 + db / 60.0, 1e-6) << db;
    }
    Follower drowned([](std::uint64_t) { return infinite; }, 0.0005f, 0.0005f);
    EXPECT_TRUE(std::isfinite(drowned.play(1000).back()));
}

TEST(EnvelopeFollower, HearsTheSameInBlocksOfAnyLength)
{
    const auto noise = signals::noise(5000, 3);
    const auto samples = [&](std::uint64_t t) {
        return t < noise.size() ? noise[t] : t < 9000 ? 0.5f : 0.0f;
    };
    const auto reference = Follower(samples, 0.002f, 0.05f).play(20000);
    for (const int blockSize : {1, 3, 64})
        EXPECT_LT(
            signals::largestDifference(Follower(samples, 0.002f, 0.05f).play(20000, blockSize), reference),
            1e-6)
            << blockSize;
}

TEST(EnvelopeFollower, RunsUnreadAndKeepsItsLevelAcrossAReset)
{
    Follower played([](std::uint64_t t) { return t < 8000 ? 1.0f : 0.0f; }, 0.01f, 1.0f);
    for (int i = 0; i < 60; ++i) {
        played.environment.nextGeneration();
        played.environment.run(128, false);
    }
    played.environment.reset(wave::Environment::Reset::Everything);
    EXPECT_NEAR(played.play(1)[0], 1.0f, 1e-3);
}

TEST(EnvelopeFollower, ScalesByItsLevelAndTakesNewTimesAtOnce)
{
    Follower played([](std::uint64_t t) { return t < 44100 ? 1.0f : 0.0f; }, 0.001f, 5.0f);
    played.follower->level.parameter().setValue(-0.5f, 0.0f);
    EXPECT_NEAR(played.play(44100).back(), -0.5f, 1e-5);
    FunctionProducer times(played.environment, [](std::uint64_t t) { return t < 50000 ? 5.0f : 0.01f; });
    played.follower->release.connect(&times);
    const auto out = played.play(6000 + 440);
    // 5900 samples at 5 s per 90 %, then 541 at 10 ms.
    EXPECT_NEAR(out[5899], -0.5 * std::pow(0.1, 5900.0 / 220500.0), 1e-5);
    EXPECT_NEAR(out.back(), -0.5 * std::pow(0.1, 5900.0 / 220500.0 + 540.0 / 441.0), 1e-5);
}

namespace {

struct Watch : GraphFixture {
    explicit Watch(std::function<float(std::uint64_t)> levelAt) : level(environment, std::move(levelAt))
    {
        trigger.input = &level;
        trigger.threshold.parameter().setValue(0.5f, 0.0f);
    }
    /// Places of the starts, and negative those of the ends.
    std::vector<int> run(int samples, int blockSize)
    {
        std::vector<int> found;
        for (int now = 0; now < samples; now += blockSize) {
            environment.nextGeneration();
            for (int twice = 0; twice < 2; ++twice)
                trigger.run(blockSize);
            for (const Trigger::Event& event : trigger.events())
                found.push_back((event.kind == Trigger::EventKind::Start ? 1 : -1) * (now + event.position));
            environment.run(blockSize, false);
        }
        return found;
    }

    FunctionProducer level;
    Trigger trigger{environment};
};

/// `inside` from `from` up to `to`, `outside` elsewhere.
std::function<float(std::uint64_t)> pulse(std::uint64_t from, std::uint64_t to, float inside, float outside)
{
    return [=](std::uint64_t t) { return t >= from && t < to ? inside : outside; };
}

}  // namespace

TEST(Trigger, StartsAboveItsThresholdAndEndsAfterAWhileBelowHalfOfIt)
{
    constexpr int held = 661;  // 15 ms
    struct Row {
        const char* what;
        std::function<float(std::uint64_t)> level;
        std::vector<int> events;
    };
    const Row rows[] = {
        {"rises and falls", pulse(100, 1000, 0.6f, 0.0f), {100, -(1000 + held)}},
        {"at the threshold", pulse(100, 1000, 0.5f, 0.0f), {}},
        {"falls to more than half", pulse(100, 1000, 0.6f, 0.26f), {100}},
        {"dips for the hold time", pulse(1000, 1000 + held, 0.1f, 0.6f), {0}},
        {"dips for a sample longer", pulse(1000, 1001 + held, 0.1f, 0.6f), {0, -(1000 + held), 1001 + held}},
        {"falls silent with a blip",
         [](std::uint64_t t) { return t < 100    ? 0.6f
                                      : t == 500 ? 0.3f
                                                 : 0.0f; },
         {0, -(501 + held)}},
        {"ends in what is no number", pulse(100, 1000, 0.6f, notANumber), {100, -(1000 + held)}},
    };
    for (const Row& row : rows)
        for (const int blockSize : {1, 3, 128})
            EXPECT_EQ(Watch(row.level).run(3840, blockSize), row.events) << row.what << " in " << blockSize;
}

TEST(Trigger, WithAThresholdOfZeroWaitsForSilence)
{
    Watch watch(pulse(100, 1000, 1e-6f, 0.0f));
    watch.trigger.threshold.parameter().setValue(0.0f, 0.0f);
    EXPECT_EQ(watch.run(3840, 128), (std::vector<int>{100, -1661}));
}

TEST(Trigger, RemembersWhatItSawWhileItIsOff)
{
    Watch watch([](std::uint64_t) { return 0.6f; });
    EXPECT_EQ(watch.run(128, 128), std::vector<int>{0});
    watch.trigger.enabled.assign(false);
    EXPECT_EQ(watch.run(128, 128), std::vector<int>{});
    watch.trigger.enabled.assign(true);
    EXPECT_EQ(watch.run(128, 128), std::vector<int>{});
}

TEST(Trigger, TakesAThresholdInDecibels)
{
    Watch watch(pulse(100, 1000, gain(-5.9), gain(-6.1)));
    watch.trigger.domain.assign(Trigger::GainChangeDomain::Decibels);
    watch.trigger.threshold.parameter().setValue(-6.0f, 0.0f);
    EXPECT_EQ(watch.run(1280, 128), std::vector<int>{100});
}
