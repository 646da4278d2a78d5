// The filters as they sound through the built module: singing, muted, and in a loop that would run away
// without them.
#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

constexpr const char* clippingOnes[] = {"Morvelane Prime", "Gentle", "Raw",  "Tube",   "Metal",
                                        "Easy Going",      "Smooth", "Hard", "Hollow", "Extreme"};

std::vector<float> burst(std::size_t length, float level, unsigned seed)
{
    std::vector<float> noise = signals::noise(length, seed);
    for (float& sample : noise)
        sample *= level;
    return noise;
}

double largest(const std::vector<float>& signal)
{
    double magnitude = 0.0;
    for (float sample : signal)
        magnitude =
            std::isfinite(sample) ? std::max(magnitude, std::fabs(static_cast<double>(sample))) : HUGE_VAL;
    return magnitude;
}

/// Seconds of sound for tests that say more the longer they run; ten minutes where SORDELIN_LONG is set. The
/// sanitizers slow them down.
int loopSeconds()
{
#if defined(SORDELIN_SANITIZED)
    return 1;
#else
    return std::getenv("SORDELIN_LONG") ? 600 : 15;
#endif
}

void setFilters(PluginPlayer& player, const std::string& control, const std::string& text)
{
    player.set(std::string("Filter 1 ").append(control), text);
    player.set(std::string("Filter 2 ").append(control), text);
}

}  // namespace

TEST(Voice, SingsOnWithoutInputUntilItIsMuted)
{
    for (bool mutes : {false, true}) {
        PluginPlayer player;
        player.set("Dry Enabled", "Disabled");
        player.set("Filter 2 Enabled", "Disabled");
        player.set("Filter 1 Characteristic", "Morvelane Prime");
        player.set("Filter 1 Freq", "110 Hz");
        player.set("Filter 1 Peak", "100%");
        player.set("Auto Mute Self-Osc", mutes ? "On" : "Off");
        player.play(burst(48000, 0.3f, 60));
        player.play(std::vector<float>(48000, 0.0f));
        const std::vector<float> out = player.play(std::vector<float>(48000, 0.0f));
        if (mutes) {
            EXPECT_LT(signals::rms(out, 0, out.size()), 1e-4);
        } else {
            EXPECT_NEAR(signals::meanFrequency(out, 0, out.size(), 48000.0), 110.0, 30.0);
        }
    }
}

TEST(Voice, StaysOpenForAnInputWhileItWouldMute)
{
    // A tone well above the gate's -46 dB keeps the peak: with and without muting the same comes out.
    std::vector<float> levels;
    for (const char* mute : {"Off", "On"}) {
        PluginPlayer player;
        player.set("Dry Enabled", "Disabled");
        player.set("Filter 1 Freq", "1000 Hz");
        player.set("Filter 1 Peak", "0.5");
        player.set("Auto Mute Self-Osc", mute);
        const std::vector<float> tone = signals::sine(1000.0, 48000.0, 96000, 0.3);
        levels.push_back(static_cast<float>(signals::rms(player.play(tone), 48000, 96000)));
    }
    EXPECT_GT(levels[0], 0.05f);
    EXPECT_NEAR(levels[1] / levels[0], 1.0, 0.02);  // the follower ripples with the tone
}

TEST(Voice, BoundsALoopAtFullFeedbackInEveryClippingCharacteristic)
{
    for (const char* characteristic : clippingOnes) {
        PluginPlayer player;
        setFilters(player, "Characteristic", characteristic);
        setFilters(player, "Peak", "0.8");
        player.set("Filter 1 Freq", "900 Hz");
        player.set("Delay 1 Time", "30 ms");
        player.set("Delay 2 Time", "47 ms");
        for (const char* delay : {"Delay 1 ", "Delay 2 "}) {
            player.set(std::string(delay).append("Feedback"), "2.0");
            player.set(std::string(delay).append("Cross Feedback"), "1.0");
        }
        double loudest = 0.0;
        for (int second = 0; second < loopSeconds(); ++second)
            loudest = std::max(loudest, largest(player.play(burst(48000, 0.5f, 61))));
        // The clippers: pi / 2 over the lowest drive of 0.1 and the smallest asymmetry of 0.1, on two lines.
        EXPECT_LT(loudest, 0.5 + 2.0 * 157.1) << characteristic;
    }
}

TEST(Voice, HoldsACleanLoopAtUnityForMinutes)
{
    // Twenty rounds of the loop add up while the burst lasts; on the way out each filter lifts its cut-off by
    // its Q, 1 / (1.4142 - 1.3942 peak), twice that while it rings up.
    for (const auto& [peak, q] : {std::pair("0", 1.0), std::pair("0.6", 1.73), std::pair("1.0", 50.0)}) {
        PluginPlayer player;
        player.set("Dry Enabled", "Disabled");
        setFilters(player, "Characteristic", "Clean");
        player.set("Filter 1 Freq", "2000 Hz");
        player.set("Filter 2 Freq", "2000 Hz");
        setFilters(player, "Peak", peak);
        player.set("Delay 1 Time", "50 ms");
        player.set("Delay 1 Feedback", "2.0");  // stops at 1
        player.set("Delay 2 Pan", "1");
        player.set("Delay 1 Pan", "-1");
        // What the resonance makes of the burst is heard while it comes in.
        const double first = largest(player.play(burst(48000, 0.1f, 62)));
        EXPECT_LT(first, 20.0 * 0.1 * 2.0 * q * q) << "peak " << peak;
        double loudest = 0.0;
        for (int second = 0; second < loopSeconds(); ++second)
            loudest = std::max(loudest, largest(player.play(std::vector<float>(48000, 0.0f))));
        EXPECT_LT(loudest, 1.5 * first) << "peak " << peak;
    }
}

TEST(Voice, TurnsAResonantLoopDownToWhatWentIn)
{
    // Gentle at a high peak lifts its cut-off by far more than the feedback takes away: without the hold the
    // loop would grow to the clipper. With it the echoes fade.
    PluginPlayer player;
    player.set("Dry Enabled", "Disabled");
    player.set("Filter 2 Enabled", "Disabled");
    player.set("Filter 1 Characteristic", "Clean");
    player.set("Filter 1 Freq", "1000 Hz");
    player.set("Filter 1 Peak", "0.9");
    player.set("Delay 1 Time", "200 ms");
    player.set("Delay 1 Feedback", "0.7");
    player.play(signals::sine(1000.0, 48000.0, 48000, 0.1));
    std::vector<double> levels;
    for (int second = 0; second < 6; ++second)
        levels.push_back(signals::rms(player.play(std::vector<float>(48000, 0.0f)), 0, 48000));
    for (std::size_t i = 2; i < levels.size(); ++i)
        EXPECT_LT(levels[i], 0.6 * levels[i - 1]) << i;
}

TEST(Voice, LetsNoNumberOutThatIsNoneWhateverComesIn)
{
    using Limits = std::numeric_limits<float>;
    for (const char* characteristic : {"Morvelane Prime", "Extreme", "Clean"}) {
        PluginPlayer player;
        setFilters(player, "Characteristic", characteristic);
        setFilters(player, "Peak", "1.0");
        player.set("Delay 1 Time", "20 ms");
        player.set("Delay 1 Feedback", "2.0");
        player.set("Delay 1 Cross Feedback", "1.0");
        player.set("Delay 2 Cross Feedback", "1.0");
        std::vector<float> wild = burst(48000, 100.0f, 63);
        const float strange[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max()};
        for (std::size_t i = 0; i < wild.size(); i += 11)
            wild[i] = strange[i % 4];
        player.set("Dry Enabled", "Disabled");
        for (int second = 0; second < 10; ++second)
            ASSERT_LT(largest(player.play(wild)), HUGE_VAL) << characteristic;
    }
}
