#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// A chord of soft tones, different on the two sides.
std::vector<float> chord(std::size_t length, double base)
{
    std::vector<float> sum(length, 0.0f);
    for (double ratio : {1.0, 1.26, 1.5, 3.97}) {
        const std::vector<float> tone = signals::sine(base * ratio, 48000.0, length, 0.1);
        for (std::size_t i = 0; i < length; ++i)
            sum[i] += tone[i];
    }
    return sum;
}

PluginPlayer::Stereo rendered(std::uint32_t block, const char* readStyle)
{
    PluginPlayer player({.block = block, .tempo = 120.0});
    player.disableFilters();  // they look at their signals once in 32 samples of a sub-block
    player.set("Delay Buffer Read Style", readStyle);
    player.set("Delay 1 Feedback", "0.6");
    player.set("Delay 2 Cross Feedback", "0.4");
    std::vector<TimedEvent> events = {player.change(4801, "Delay 1 Feedback", "0.3"),
                                      player.change(9607, "Delay 1 Pan", "-0.7"),
                                      player.change(12345, "Wet Level", "-9 dB"),
                                      player.change(15000, "Dry Enabled", "Disabled"),
                                      player.change(20011, "Channel Mode", "Mid/Side"),
                                      player.change(20011, "Input Level", "3 dB"),
                                      player.change(24013, "Delay Freeze", "On"),
                                      player.change(30017, "Delay Freeze", "Off"),
                                      player.change(33333, "Feedback Link", "Linked"),
                                      player.change(36001, "Delay 1 Feedback Invert", "Inverted")};
    if (std::string(readStyle) == "Tape") {
        events.push_back(player.change(7003, "Delay 1 Time", "210 ms"));
        events.push_back(player.change(28001, "Delay 2 Sync", "Quarter Note"));
        events.push_back(player.change(40009, "Delay Link", "Linked"));
    }
    for (int i = 0; i < 200; ++i)  // a slow move of a knob
        events.push_back(player.change(44000 + 101 * i, "Delay 2 Pan", std::to_string(0.005 * i)));
    player.schedule(events);
    return player.play(chord(72000, 220.0), chord(72000, 277.0));
}

}  // namespace

// In Tape a line at rest is found so at the start of a sub-block only, up to a thousandth of a sample early;
// that and the rounding of ramps is all that the cutting changes: below -66 dB of the signal's level. In
// Stretch a fade takes its new place from the start of the sub-block in which it begins, so moving times may
// differ there by design; everything else must not.
TEST(HostBlock, SizesDoNotChangeTheSound)
{
    struct Row {
        const char* style;
        double tolerance;
    };
    for (const auto& [style, tolerance] : {Row{"Tape", 5e-4}, Row{"Stretch", 2e-6}}) {
        const PluginPlayer::Stereo whole = rendered(128, style);
        EXPECT_GT(signals::rms(whole.first, 48000, 72000), 0.02);
        for (std::uint32_t block : {1u, 7u, 64u, 333u, 4096u}) {
            const PluginPlayer::Stereo cut = rendered(block, style);
            EXPECT_LT(signals::largestDifference(cut.first, whole.first), tolerance) << style << " " << block;
            EXPECT_LT(signals::largestDifference(cut.second, whole.second), tolerance)
                << style << " " << block;
        }
    }
}

TEST(HostBlock, ParameterEventsTakeEffectAtTheirSample)
{
    // A dry level that nobody smooths doesn't exist; the sample where the ramp begins tells where the event
    // went.
    for (std::uint32_t block : {1u, 100u, 4096u}) {
        PluginPlayer player({.block = block});
        player.set("Wet Level", "-INF dB");
        player.schedule({player.change(1037, "Dry Level", "-12 dB")});
        const std::vector<float> out = player.play(std::vector<float>(2000, 1.0f));
        for (std::size_t i = 0; i <= 1037; ++i)
            ASSERT_EQ(out[i], 1.0f) << block << " at " << i;
        EXPECT_LT(out[1038], 1.0f);
    }
}
