#include "dsp/Delay.h"

#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

/// Writes a signal in blocks and reads each block after it, as an owner of a plain delay does.
std::vector<float> delayed(wave::Delay& line, const std::vector<float>& in, int delay, int blockSize)
{
    std::vector<float> out(in.size());
    for (std::size_t i = 0; i < in.size(); i += static_cast<std::size_t>(blockSize)) {
        const int count = std::min(blockSize, static_cast<int>(in.size() - i));
        line.setUnwritten(0);
        line.write(in.data() + i, count);
        line.read(delay, out.data() + i, count);
    }
    return out;
}

}  // namespace

TEST(Delay, SizesItsRingToThePowerOfTwoAboveDelayAndBlock)
{
    wave::Environment environment;
    struct Row {
        int longest, ring;
    };
    for (const auto& [longest, ring] : {Row{220500, 262144}, Row{240000, 262144}, Row{480000, 524288},
                                        Row{960000, 1048576}, Row{0, 128}, Row{129, 512}})
        EXPECT_EQ(wave::Delay(environment, longest).ringLength(), ring);
}

TEST(Delay, GivesBackEverySampleAcrossManyRoundsOfTheRing)
{
    wave::Environment environment;
    const std::vector<float> in = signals::noise(5000, 1);
    for (int delay : {0, 1, 127, 128, 500, 896}) {
        for (int blockSize : {1, 37, 128}) {
            wave::Delay line(environment, 896);  // a ring of 1024
            const std::vector<float> out = delayed(line, in, delay, blockSize);
            for (std::size_t i = 0; i < in.size(); ++i) {
                const float expected =
                    i < static_cast<std::size_t>(delay) ? 0.0f : in[i - static_cast<std::size_t>(delay)];
                ASSERT_EQ(out[i], expected) << "delay " << delay << " block " << blockSize << " at " << i;
            }
        }
    }
}

TEST(Delay, ForgetsAtAClearWhatIsStillInItsMemory)
{
    wave::Environment environment;
    wave::Delay line(environment, 500);
    delayed(line, signals::noise(3000, 2), 100, 128);
    line.clear();
    const std::vector<float> out = delayed(line, std::vector<float>(2000, 0.0f), 400, 64);
    EXPECT_EQ(out, std::vector<float>(2000, 0.0f));
}

TEST(Delay, InterpolatesOnStraightLines)
{
    wave::Environment environment;
    wave::Delay line(environment, 1000);
    std::vector<float> ramp(600);
    for (std::size_t i = 0; i < ramp.size(); ++i)
        ramp[i] = static_cast<float>(i);
    line.write(ramp.data(), 300);
    line.write(ramp.data() + 300, 300);
    line.setUnwritten(0);
    const float delays[] = {0.0f, 0.5f, 100.25f, 330.75f, 590.0f, 593.5f, 594.5f, 700.0f};
    float out[8];
    line.readLinear(delays, out, 8);
    // Sample i of the block is number 592 + i; half a sample before the first one is half of it.
    const float expected[] = {592.0f, 592.5f, 493.75f, 264.25f, 6.0f, 3.5f, 3.5f, 0.0f};
    for (int i = 0; i < 8; ++i)
        EXPECT_FLOAT_EQ(out[i], expected[i]) << i;
}

TEST(Delay, ReadsThroughAnAllPassAtUnityGainAndTheDelayAskedFor)
{
    // A sine of 1 kHz at 48 kHz, 100.4 samples ago: magnitude 1, phase by the fraction, to a part in a
    // thousand.
    wave::Environment environment;
    wave::Delay line(environment, 1000);
    const std::vector<float> in = signals::sine(1000.0, 48000.0, 4096);
    const std::vector<float> delays(64, 100.4f);
    std::vector<float> out(in.size());
    float state = 0.0f;
    for (std::size_t i = 0; i < in.size(); i += 64) {
        line.setUnwritten(0);
        line.write(in.data() + i, 64);
        line.readAllpass(delays.data(), out.data() + i, &state, 64);
    }
    for (std::size_t i = 2000; i < in.size(); ++i) {
        const double expected =
            std::sin(2.0 * std::numbers::pi * 1000.0 * (static_cast<double>(i) - 100.4) / 48000.0);
        ASSERT_NEAR(out[i], expected, 1e-3);
    }
}

TEST(Delay, StaysFiniteWhateverIsWritten)
{
    using Limits = std::numeric_limits<float>;
    wave::Environment environment;
    wave::Delay line(environment, 500);
    const std::vector<float> in = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 1e30f,
                                   100.0f};
    const std::vector<float> expected = {0.0f, 1e6f, -1e6f, 1e6f, 100.0f};
    EXPECT_EQ(delayed(line, in, 0, 5), expected);
}
