#include "render/LevelMeter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

TEST(LevelMeter, SineHasItsAmplitudeAsPeakAndHalfItsSquareAsPower)
{
    // 100 samples per period, whole periods: the crest is hit, and the mean of the squares is a^2 / 2
    // exactly.
    StereoSignal signal{48000.0, {}, {}};
    for (int i = 0; i < 10000; ++i) {
        const double sine = std::sin(2.0 * std::numbers::pi * i / 100.0);
        signal.left.push_back(static_cast<float>(0.5 * sine));
        signal.right.push_back(static_cast<float>(-0.5 * sine));
    }
    const LevelMeter meter(signal);
    EXPECT_NEAR(meter.peak(), 0.5, 1e-7);
    EXPECT_NEAR(meter.rms(), 0.5 / std::numbers::sqrt2, 1e-7);
}

TEST(LevelMeter, MeasuresBothChannelsAsOne)
{
    const LevelMeter meter(StereoSignal{48000.0, {0.6f, 0.6f}, {-0.8f, 0.0f}});
    EXPECT_FLOAT_EQ(static_cast<float>(meter.peak()), 0.8f);
    EXPECT_NEAR(meter.rms(), std::sqrt((0.36 + 0.36 + 0.64) / 4.0), 1e-7);
}

TEST(LevelMeter, CountsWhatIsNoNumberAndMeasuresTheRest)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    LevelMeter meter;
    meter.add(std::vector<float>{std::nanf(""), infinity, -infinity, 0.25f, -0.25f});
    EXPECT_EQ(meter.nonFinite(), 3u);
    EXPECT_EQ(meter.peak(), 0.25);
    EXPECT_EQ(meter.rms(), 0.25);
}

TEST(LevelMeter, NothingAndSilenceHaveNoLevel)
{
    LevelMeter meter;
    EXPECT_EQ(meter.rms(), 0.0);
    meter.add(std::vector<float>(10, 0.0f));
    EXPECT_EQ(meter.peak(), 0.0);
    EXPECT_EQ(decibelText(meter.peak()), "silence");
}

TEST(LevelMeter, WritesDecibelsToOnePlace)
{
    // 20 log10: 0.5 is -6.0206, 2 is 6.0206, 1e-4 is -80; just below full scale rounds to 0 without a sign.
    EXPECT_EQ(decibelText(1.0), "0.0 dBFS");
    EXPECT_EQ(decibelText(0.9999), "0.0 dBFS");
    EXPECT_EQ(decibelText(0.5), "-6.0 dBFS");
    EXPECT_EQ(decibelText(2.0), "+6.0 dBFS");
    EXPECT_EQ(decibelText(1e-4), "-80.0 dBFS");
}
