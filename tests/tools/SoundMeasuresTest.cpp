#include "audition/SoundMeasures.h"
#include "audition/KWeighting.h"
#include "audition/SpectralMovement.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double sampleRate = 48000.0;
constexpr std::size_t second = 48000;

/// @param leftGain, rightGain  of the same samples
StereoSignal stereo(std::vector<float> samples, float leftGain, float rightGain)
{
    StereoSignal signal{sampleRate, samples, std::move(samples)};
    for (float& sample : signal.left)
        sample *= leftGain;
    for (float& sample : signal.right)
        sample *= rightGain;
    return signal;
}

StereoSignal sine(double hertz, double seconds, float leftGain, float rightGain)
{
    return stereo(signals::sine(hertz, sampleRate, static_cast<std::size_t>(seconds * sampleRate)), leftGain,
                  rightGain);
}

/// Silence for a second, then noise that changes by `dbPerSecond`.
StereoSignal slope(double dbPerSecond, double firstDb, double seconds)
{
    std::vector<float> samples = signals::noise(static_cast<std::size_t>(seconds * sampleRate), 7);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / sampleRate;
        samples[i] *= static_cast<float>(std::pow(10.0, (firstDb + dbPerSecond * time) / 20.0));
    }
    return stereo(std::move(samples), 1.0f, 1.0f);
}

/// A sine whose level swings by `depth` of it, `hertz` times a second.
StereoSignal tremolo(double depth, double hertz)
{
    StereoSignal signal = sine(1000.0, 4.0, 0.2f, 0.2f);
    for (std::size_t i = 0; i < signal.frames(); ++i) {
        const double phase = 2.0 * std::numbers::pi * hertz * static_cast<double>(i) / sampleRate;
        const auto gain = static_cast<float>(1.0 + depth * std::sin(phase));
        signal.left[i] *= gain;
        signal.right[i] *= gain;
    }
    return signal;
}

}  // namespace

TEST(KWeighting, ReadsSinesAsTheStandardSays)
{
    // Its own check: 997 Hz at full scale in one channel reads -3.01 LUFS. The others are from its
    // coefficients for 48 kHz, evaluated on the unit circle: -1.13 dB at 100 Hz and +4.04 dB at 10 kHz, less
    // 0.691 and 3.01.
    struct Row {
        double hertz;
        float left;
        float right;
        double lufs;
    };
    for (const auto& [hertz, left, right, lufs] :
         {Row{997.0, 1.0f, 0.0f, -3.01}, Row{997.0, 1.0f, 1.0f, 0.0}, Row{997.0, 0.1f, 0.1f, -20.0},
          Row{100.0, 1.0f, 0.0f, -4.83}, Row{10000.0, 1.0f, 0.0f, 0.34}})
        EXPECT_NEAR(loudness(sine(hertz, 2.0, left, right), second, 2 * second), lufs, 0.03) << hertz;
    EXPECT_EQ(loudness(sine(997.0, 1.0, 0.0f, 0.0f), 0, second), -200.0);
}

TEST(SoundMeasures, WidthIsSideOverMiddle)
{
    struct Row {
        float left;
        float right;
        double db;
    };
    // One side alone has as much in the difference as in the sum; 1 and 0.5 give 20 log10(0.5 / 1.5).
    for (const auto& [left, right, db] :
         {Row{1.0f, 1.0f, -40.0}, Row{1.0f, 0.0f, 0.0}, Row{1.0f, 0.5f, -9.54}, Row{1.0f, -1.0f, 20.0},
          Row{0.0f, 0.0f, -40.0}})
        EXPECT_NEAR(widthDb(sine(500.0, 1.0, left, right)), db, 0.01) << left << ' ' << right;
}

TEST(SoundMeasures, TailEndsWhereTheSoundIsSixtyDecibelsDown)
{
    // 20 dB a second reach 60 dB after 3 s, 2 s behind an input of one second.
    const Tail tail = tailOf(slope(-20.0, 0.0, 5.0), second);
    EXPECT_NEAR(tail.seconds, 2.0, 0.1);
    EXPECT_FALSE(tail.longer);

    const Tail longTail = tailOf(slope(-5.0, 0.0, 5.0), second);
    EXPECT_NEAR(longTail.seconds, 4.0, 1e-9);
    EXPECT_TRUE(longTail.longer);
    EXPECT_EQ(tailOf(sine(500.0, 1.0, 0.0f, 0.0f), 0).seconds, 0.0);
}

TEST(SoundMeasures, TellsGrowthFromSustain)
{
    EXPECT_TRUE(growsAtTheEnd(slope(2.0, -30.0, 5.0), second));
    EXPECT_FALSE(growsAtTheEnd(slope(0.0, -10.0, 5.0), second));
    EXPECT_FALSE(growsAtTheEnd(slope(-2.0, -10.0, 5.0), second));
    EXPECT_FALSE(growsAtTheEnd(slope(2.0, -90.0, 5.0), second));  // nobody hears it

    StereoSignal echo = slope(0.0, -20.0, 5.0);  // a pause, and then as loud as before
    std::fill(echo.left.begin() + 3 * second, echo.left.begin() + 4 * second, 0.0f);
    std::fill(echo.right.begin() + 3 * second, echo.right.begin() + 4 * second, 0.0f);
    EXPECT_FALSE(growsAtTheEnd(echo, second));
}

TEST(SpectralMovement, SeesTheCentreOfASpectrum)
{
    StereoSignal signal = sine(500.0, 2.0, 0.5f, 0.5f);
    const StereoSignal other = sine(3000.0, 2.0, 0.5f, 0.5f);
    for (std::size_t i = 0; i < signal.frames(); ++i) {
        signal.left[i] += other.left[i];
        signal.right[i] += other.right[i];
    }
    SpectralMovement movement;
    // Halfway between equal powers; bands are a semitone wide, so within 3 %.
    EXPECT_NEAR(movement.read(signal, 0, signal.frames()).centroidHz, 1750.0, 50.0);
}

TEST(SpectralMovement, MeasuresTheSwingOfALevel)
{
    // The standard deviation of 20 log10(1 + d sin) over a cycle, by the rectangle rule. At half a cycle a
    // second the pieces of 85 ms smooth nothing away.
    const double depth = 0.5;
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < 1000; ++i) {
        const double level = 20.0 * std::log10(1.0 + depth * std::sin(2.0 * std::numbers::pi * i / 1000.0));
        sum += level / 1000.0;
        squares += level * level / 1000.0;
    }
    SpectralMovement movement;
    const StereoSignal moving = tremolo(depth, 0.5);
    const StereoSignal still = tremolo(0.0, 0.5);
    const auto wet = movement.read(moving, 0, moving.frames());
    const auto dry = movement.read(still, 0, still.frames());
    EXPECT_NEAR(movementDb(wet, dry), std::sqrt(squares - sum * sum), 0.1);
    EXPECT_NEAR(movementDb(dry, dry), 0.0, 1e-9);
    EXPECT_EQ(movementDb(dry, wet), 0.0);
}
