#include "dsp/DelayLine.h"

#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double tone = 1000.0;  // Hz

/// A delay line that plays a signal, with a delay time that a test sets at block borders.
struct LineFixture : GraphFixture {
    explicit LineFixture(float rate = 48000.0f)
    {
        environment.setSampleRate(rate);
        line.delayTime.connect(&time);
    }

    void play(std::vector<float> signal)
    {
        source = std::make_unique<FunctionProducer>(environment, playing(std::move(signal)));
        line.input = source.get();
    }
    /// Plays a 1 kHz tone at a delay of `from` ms that jumps to `to` ms after a second; the result begins
    /// there.
    std::vector<float> jump(float from, float to, int samples, int blockSize = 128)
    {
        play(signals::sine(tone, environment.sampleRate(), 48000u + static_cast<std::size_t>(samples)));
        ms = from;
        render(line, 48000, blockSize);
        ms = to;
        return render(line, samples, blockSize);
    }

    float ms = 100.0f;
    FunctionProducer time{environment, [this](std::uint64_t) { return ms; }};
    DelayLine line{environment};
    std::unique_ptr<FunctionProducer> source;
};

/// Where a chase from `from` to `to` samples stands at sample n. The recursion
///   e(n+1) = (2 - 2c - c^2) e(n) - (1 - 2c) e(n-1),  e(0) = E, e(1) = (1 - c^2) E,  c = 2 sin(pi 5 / rate)
/// of its error solved by its two roots.
double chased(double from, double to, double rate, double n)
{
    const double c = 2.0 * std::sin(pi * 5.0 / rate);
    const double middle = 1.0 - c - c * c / 2.0;
    const double spread = std::sqrt(middle * middle - (1.0 - 2.0 * c));
    const double a = middle + spread;
    const double b = middle - spread;
    const double first = from - to;
    const double weightA = (first * (1.0 - c * c) - first * b) / (a - b);
    return to + weightA * std::pow(a, n) + (first - weightA) * std::pow(b, n);
}

/// The bend of a 1 kHz tone of full scale at 48 kHz, (2 pi f / rate)^2. A sample left out or played twice
/// bends it by 0.13 more.
const double toneBend = std::pow(2.0 * pi * tone / 48000.0, 2.0);

}  // namespace

TEST(DelayLine, WaitsForTheWholeSamplesOfItsTimeAtEveryRate)
{
    struct Row {
        float rate, ms;
        std::size_t samples;
    };
    for (const auto& [rate, ms, samples] :
         {Row{48000.0f, 100.0f, 4800}, Row{44100.0f, 100.01f, 4410}, Row{44100.0f, 5.0f, 220},
          Row{96000.0f, 5000.0f, 480000}, Row{192000.0f, 350.0f, 67200}}) {
        for (auto type :
             {DelayLine::ReadType::Tape, DelayLine::ReadType::Stretch, DelayLine::ReadType::Crossfade}) {
            LineFixture fixture(rate);
            fixture.line.readType.assign(type);
            fixture.ms = ms;
            fixture.play(signals::impulse(1000, 700));
            const std::vector<float> out =
                fixture.render(fixture.line, static_cast<int>(samples) + 1000, 100);
            std::vector<float> expected(out.size(), 0.0f);
            expected[700 + samples] = 1.0f;
            EXPECT_EQ(out, expected) << rate << " Hz, " << ms << " ms";
        }
    }
}

TEST(DelayLine, GlidesAlongTheCriticallyDampedCurveInTapeMode)
{
    // A rising line as the signal shows the delay itself: out(i) = k (i - delay).
    constexpr double slope = 1e-5;
    LineFixture fixture;
    std::vector<float> rising(96000);
    for (std::size_t i = 0; i < rising.size(); ++i)
        rising[i] = static_cast<float>(slope * static_cast<double>(i));
    fixture.play(rising);
    fixture.render(fixture.line, 48000);
    fixture.ms = 200.0f;
    const std::vector<float> out = fixture.render(fixture.line, 48000);
    for (std::size_t n = 0; n < out.size(); n += 100) {
        const double delay = 48000.0 + static_cast<double>(n) - out[n] / slope;
        ASSERT_NEAR(delay, chased(4800.0, 9600.0, 48000.0, static_cast<double>(n)), 0.05) << n;
    }
}

TEST(DelayLine, BendsThePitchInTapeModeAndKeepsItInStretchMode)
{
    // 100 to 120 ms: the fastest glide is E w / e with w = 10 pi, after 1/w = 31.8 ms; the pitch falls by
    // that part.
    const double slowest = tone * (1.0 - 960.0 * 10.0 * pi / std::exp(1.0) / 48000.0);
    LineFixture tape;
    const std::vector<float> bent = tape.jump(100.0f, 120.0f, 48000);
    EXPECT_NEAR(signals::meanFrequency(bent, 1528 - 150, 1528 + 150, 48000.0), slowest, 3.0);
    EXPECT_NEAR(signals::meanFrequency(bent, 40000, 47000, 48000.0), tone, 0.01);

    LineFixture stretch;
    stretch.line.readType.assign(DelayLine::ReadType::Stretch);
    const std::vector<float> kept = stretch.jump(100.0f, 120.0f, 48000);
    for (std::size_t at = 0; at + 480 < kept.size(); at += 480)
        ASSERT_NEAR(signals::meanFrequency(kept, at, at + 480, 48000.0), tone, 25.0) << at;
}

TEST(DelayLine, MakesNoStepWhenItsTimeJumpsAndEndsAtTheExactSample)
{
    struct Row {
        float from, to;
    };
    for (auto type :
         {DelayLine::ReadType::Tape, DelayLine::ReadType::Stretch, DelayLine::ReadType::Crossfade}) {
        // From below the time settles on its last sample in the end only.
        for (const auto& [from, to] : {Row{100.0f, 120.0f}, Row{120.0f, 100.0f}, Row{5.0f, 7.0f}}) {
            LineFixture fixture;
            fixture.line.readType.assign(type);
            const std::vector<float> out = fixture.jump(from, to, 96000);
            // A glide of 23 % bends the tone by its square; fades of one tone into another by 2 % of the
            // height.
            EXPECT_LT(signals::largestBend(out), toneBend * 1.6 + 0.02) << from << " to " << to;
            const auto delay = static_cast<std::size_t>(to * 48.0f);
            const std::vector<float> in = signals::sine(tone, 48000.0, 144000);
            for (std::size_t i = 90000; i < 96000; ++i)
                ASSERT_EQ(out[i], in[48000 + i - delay]) << from << " to " << to << " at " << i;
        }
    }
}

TEST(DelayLine, FadesBetweenTapeAndStretchWhileTheTimeMoves)
{
    for (int firstSwitch : {500, 3000}) {
        LineFixture fixture;
        fixture.play(signals::sine(tone, 48000.0, 96000));
        fixture.render(fixture.line, 48000);
        fixture.ms = 120.0f;
        const auto before = [&](std::uint64_t now) {
            // To and fro, also faster than a fade takes.
            const auto moved = static_cast<int>(now) - 48000 - firstSwitch;
            const bool stretches = moved >= 0 && (moved / 600) % 2 == 0;
            fixture.line.readType.assign(stretches ? DelayLine::ReadType::Stretch
                                                   : DelayLine::ReadType::Tape);
        };
        const std::vector<float> out = fixture.render(fixture.line, 30000, 100, before);
        EXPECT_LT(signals::largestBend(out), toneBend * 1.6 + 0.02);
    }
}

TEST(DelayLine, TakesAJumpBetweenConstantTimesAsAGlideToo)
{
    // The very first block is constant, and so is the first one after the jump: no sample of it may be
    // elsewhere.
    LineFixture fixture;
    const std::vector<float> out = fixture.jump(350.0f, 500.0f, 128);
    const std::vector<float> in = signals::sine(tone, 48000.0, 60000);
    EXPECT_NEAR(out[0], in[48000 - 16800], 1e-6);
    EXPECT_NEAR(out[10], in[48000 - 16800 + 10], 0.01);
}

TEST(DelayLine, BringsBackNothingFromBeforeAGapOrAReset)
{
    for (bool gap : {true, false}) {
        LineFixture fixture;
        fixture.play(signals::noise(4800, 3));
        fixture.render(fixture.line, 4800);
        if (gap)
            fixture.skip(128);
        else
            fixture.environment.reset(wave::Environment::Reset::Enabled);
        EXPECT_EQ(fixture.render(fixture.line, 20000), std::vector<float>(20000, 0.0f));
    }
}

TEST(DelayLine, StartsAtItsTimeAfterAGap)
{
    LineFixture fixture;
    fixture.play(signals::impulse(10, 9));
    fixture.render(fixture.line, 1);
    fixture.skip(128);
    fixture.ms = 50.0f;
    fixture.source = std::make_unique<FunctionProducer>(
        fixture.environment, [](std::uint64_t t) { return t == 129 ? 1.0f : 0.0f; });
    fixture.line.input = fixture.source.get();
    EXPECT_EQ(fixture.render(fixture.line, 2401), signals::impulse(2401, 2400));
}

TEST(DelayLine, KeepsWhatItHoldsWhileNobodyReadsIt)
{
    LineFixture fixture;
    FunctionProducer other(fixture.environment, [](std::uint64_t) { return 0.0f; });
    fixture.play(signals::noise(2000, 4));
    fixture.render(other, 3000);  // the line only takes its input
    const std::vector<float> out = fixture.render(fixture.line, 4000);
    const std::vector<float> in = signals::noise(2000, 4);
    EXPECT_TRUE(std::equal(in.begin(), in.end(), out.begin() + 1800));
}

TEST(DelayLine, RepeatsItsContentWithoutLossWhenItFeedsItself)
{
    for (auto type : {DelayLine::ReadType::Tape, DelayLine::ReadType::Stretch}) {
        LineFixture fixture;
        fixture.line.readType.assign(type);
        const std::vector<float> in = signals::noise(4800, 5);
        fixture.play(in);
        fixture.render(fixture.line, 4800);
        fixture.line.input = &fixture.line;
        const std::vector<float> out = fixture.render(fixture.line, 480000, 97);
        for (std::size_t i = 0; i < out.size(); ++i)
            ASSERT_EQ(out[i], in[i % 4800]);
    }
}

TEST(DelayLine, FollowsATimeInSamplesAtOnceWithoutSmoothing)
{
    LineFixture fixture;
    fixture.line.interpretation.assign(DelayLine::DelayInterpretation::Samples);
    fixture.line.smoothing.assign(false);
    fixture.ms = 1000.4f;  // in samples now: 1000 at rest
    fixture.play(signals::impulse(10));
    EXPECT_EQ(fixture.render(fixture.line, 1010), signals::impulse(1010, 1000));
}
