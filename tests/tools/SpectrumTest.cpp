#include "plot/Spectrum.h"
#include "plot/ColourMap.h"
#include "plot/Spectrogram.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double sampleRate = 48000.0;

StereoSignal sine(double hertz, double left, double right)
{
    StereoSignal signal{sampleRate, {}, {}};
    for (int i = 0; i < 48000; ++i) {
        const double value = std::sin(2.0 * std::numbers::pi * hertz * i / sampleRate);
        signal.left.push_back(static_cast<float>(left * value));
        signal.right.push_back(static_cast<float>(right * value));
    }
    return signal;
}

}  // namespace

TEST(Spectrum, FullScaleSineInBothChannelsHasPowerOneInItsBin)
{
    // 1500 Hz lies in bin 32 of 1024 at 48 kHz. A Hann window spreads it to the neighbours at half the
    // amplitude.
    struct Row {
        double left;
        double right;
        double power;  // (left^2 + right^2) / 2
    };
    for (const auto& [left, right, power] : {Row{1.0, 1.0, 1.0}, Row{1.0, 0.0, 0.5}, Row{0.5, -0.5, 0.25}}) {
        Spectrum spectrum(1024);
        std::vector<double> bins(spectrum.bins());
        spectrum.addPower(sine(1500.0, left, right), 24000.0, bins);
        EXPECT_NEAR(bins[32], power, 1e-4);
        EXPECT_NEAR(bins[31], power / 4.0, 1e-4);
        EXPECT_NEAR(bins[33], power / 4.0, 1e-4);
        EXPECT_LT(bins[40], 1e-8);
    }
}

TEST(Spectrogram, ShowsASineInTheRowOfItsPitchWhileItSounds)
{
    // 20 rows over 1000 times the frequency: row 10 from the top ends at 20000 / sqrt(1000) = 632 Hz, so 600
    // Hz lies in it. One second of sound in two seconds of picture.
    const StereoSignal signal = sine(600.0, 1.0, 1.0);
    const Spectrogram spectrogram(signal, {20, 20, 2.0, 20.0, 20000.0});
    EXPECT_NEAR(spectrogram.at(5, 10), 0.0f, 1.5f);  // the window's scallop between two bins is 1.42 dB
    EXPECT_LT(spectrogram.at(5, 4), -60.0f);
    EXPECT_LT(spectrogram.at(5, 16), -40.0f);
    EXPECT_EQ(spectrogram.at(15, 10), -140.0f);
}

TEST(ColourMap, GrowsLighterAllTheWay)
{
    const ColourMap colours;
    double previous = -1.0;
    for (int i = 0; i <= 20; ++i) {
        const std::uint32_t rgb = colours.at(i / 20.0);
        const auto linear = [rgb](int shift) { return std::pow(((rgb >> shift) & 255) / 255.0, 2.2); };
        // Relative luminance of Rec. 709 primaries.
        const double luminance = 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
        EXPECT_GT(luminance, previous) << i;
        previous = luminance;
    }
    EXPECT_EQ(colours.at(-1.0), colours.at(0.0));
    EXPECT_EQ(colours.at(2.0), colours.at(1.0));
}
