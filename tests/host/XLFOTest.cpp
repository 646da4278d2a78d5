// XLFOs as they sound through the built module.
#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// A delay without filters and feedback, with one XLFO of two steps on its first slot.
struct Wobbled : PluginPlayer {
    explicit Wobbled(const Setup& playerSetup = {}) : PluginPlayer(playerSetup)
    {
        disableFilters();
        set("Wet Level", "-INF dB");
        set("Num Active XLFOs", "1");
        set("Num Active Slots", "1");
        set("Slot 1 Source", "XLFO 1");
    }
    void reach(const char* target, const char* level)
    {
        set("Slot 1 Target", target);
        set("Slot 1 Level", level);
    }
    void setStep(int step, const char* value, const char* glide, const char* curve = "Linear")
    {
        const std::string name = "XLFO 1 Step " + std::to_string(step) + " ";
        set(name + "Value", value);
        set(name + "Glide", glide);
        set(name + "Glide function", curve);
    }
    void makeTriangle()
    {
        setStep(1, "-1", "1");
        setStep(2, "1", "1");
    }
};

std::vector<float> steady(std::size_t length) { return std::vector<float>(length, 0.5f); }

}  // namespace

TEST(XLFO, TremblesByItsClosedForm)
{
    struct Row {
        std::optional<double> tempo;
        const char* sync;
        const char* frequency;
        double hertz;
        std::uint32_t block;
    };
    for (const auto& [tempo, sync, frequency, hertz, block] :
         {Row{std::nullopt, "Free", "4 Hz", 4.0, 128}, Row{std::nullopt, "Free", "90 Hz", 90.0, 500},
          Row{120.0, "1/4", "4 Hz", 2.0, 512}, Row{97.0, "1/16", "4 Hz", 97.0 / 15.0, 33},
          // Without a song the clock runs at 120 beats a minute.
          Row{std::nullopt, "1/2", "4 Hz", 1.0, 256}}) {
        Wobbled player({.block = block, .tempo = tempo});
        player.set("Dry Level", "-6.0206 dB");
        player.set("XLFO 1 Frequency", frequency);
        player.set("XLFO 1 Sync Mode", sync);
        player.makeTriangle();
        player.reach("Dry Level", "0.3");
        const auto out = player.play(steady(96000));
        // The level ramps to its text's value before the first sample; the frequency's text is rounded.
        double worst = 0.0;
        for (std::size_t i = 48; i < out.size(); ++i) {
            const double phase = std::fmod(static_cast<double>(i) * hertz / 48000.0, 1.0);
            const double triangle = 1.0 - std::fabs(2.0 - 4.0 * phase);
            worst = std::max(worst, std::fabs(out[i] - 0.5 * (0.5 + 0.3 * triangle)));
        }
        EXPECT_LT(worst, 2e-3) << sync << ' ' << frequency;
    }
}

TEST(XLFO, ReachesByOctavesOnAFilterWhereItSnaps)
{
    struct Row {
        const char* snap;
        const char* value;
        double octaves;
    };
    // Twelfths of an octave with a depth of 1, or any part of 4.2 octaves; at a level of 0.5.
    for (const Row& row : {Row{"Snap", "0.51", 0.25}, Row{"Snap", "-0.34", -2.0 / 12.0},
                           Row{"No Snap", "0.51", 1.071}, Row{"No Snap", "-0.34", -0.714}}) {
        const auto playFiltered = [&](bool modulated) {
            Wobbled player;
            player.set("Wet Level", "0 dB");
            player.set("Dry Enabled", "Disabled");
            player.set("Filter 1 Enabled", "Enabled");
            player.set("Filter 1 Freq",
                       modulated ? "440 Hz" : std::to_string(440.0 * std::exp2(row.octaves)));
            player.set("Filter 1 Peak", "50%");
            if (modulated) {
                player.set("Num Active XLFO 1 Steps", "1");
                player.setStep(1, row.value, "0");
                player.set("XLFO 1 Snap", row.snap);
                player.reach("Filter 1 Freq", "0.5");
            }
            player.play(signals::noise(24000, 7));
            return player.play(signals::noise(48000, 8));
        };
        const auto modulated = playFiltered(true);
        const auto tuned = playFiltered(false);
        const double level = signals::rms(tuned, 0, tuned.size());
        EXPECT_GT(level, 0.01);
        EXPECT_LT(signals::largestDifference(modulated, tuned), 0.05 * level) << row.snap << ' ' << row.value;
    }
}

TEST(XLFO, ReachesAsFarAsAnySourceWhereItSnapsOnAnotherTarget)
{
    for (const auto& [snap, echo] : {std::pair{"No Snap", 4800 + 1200}, {"Snap", 4800 + 11988}}) {
        Wobbled player;
        player.set("Wet Level", "0 dB");
        player.set("Delay 1 Pan", "-1");
        player.set("Delay 2 Pan", "1");
        player.set("Delay 1 Time", "100 ms");
        player.set("Num Active XLFO 1 Steps", "1");
        player.setStep(1, "0.5", "0");
        player.set("XLFO 1 Snap", snap);
        player.reach("Delay 1 Time", "0.1");  // half a tenth of 500 ms, or of 4995 ms
        player.play(std::vector<float>(48000, 0.0f));
        const auto out = player.play(signals::impulse(20000), std::vector<float>(20000, 0.0f)).first;
        const auto loudest = std::max_element(out.begin() + 1, out.end()) - out.begin();
        EXPECT_NEAR(static_cast<double>(loudest), echo, 1.0) << snap;
    }
}

TEST(XLFO, StartsOverAtTheSampleOfANote)
{
    struct Row {
        const char* trigger;
        int key;
        bool startsOver;
    };
    for (const auto& [trigger, key, startsOver] :
         {Row{"On", 60, true}, Row{"Off", 60, false}, Row{"On", 0, false}}) {
        Wobbled player({.block = 512});
        player.set("Dry Level", "-6.0206 dB");
        player.set("XLFO 1 Frequency", "2 Hz");
        player.set("XLFO 1 MIDI Trigger", trigger);
        player.makeTriangle();
        player.reach("Dry Level", "0.3");
        player.schedule({{20011, midiEvent(0, 0x93, static_cast<std::uint8_t>(key), 100)}});
        const auto out = player.play(steady(48000));
        const std::size_t begin = startsOver ? 20011 : 0;
        double worst = 0.0;
        for (std::size_t i = 20011; i < out.size(); ++i) {
            const double phase = std::fmod(static_cast<double>(i - begin) * 2.0 / 48000.0, 1.0);
            const double triangle = 1.0 - std::fabs(2.0 - 4.0 * phase);
            worst = std::max(worst, std::fabs(out[i] - 0.5 * (0.5 + 0.3 * triangle)));
        }
        EXPECT_LT(worst, 1e-3) << trigger << ' ' << key;
    }
}

TEST(XLFO, IsNotHeardToClickWhenItsControlsMove)
{
    struct Row {
        const char* control;
        const char* from;
        const char* to;
        const char* curve;
    };
    // A tone of 20 Hz that a click at -60 dBFS would bend by as much again as a fade of the whole signal.
    for (const auto& [control, from, to, curve] :
         {Row{"XLFO 1 Frequency", "0.5 Hz", "3 Hz", "Sine"}, Row{"XLFO 1 Phase Offset", "0", "0.3", "Sine"},
          Row{"XLFO 1 Balance", "0.5", "0.8", "Sine"}, Row{"XLFO 1 Balance", "0.3", "0.31", "Linear"},
          Row{"Slot 1 Level", "0.1", "0.5", "Sine"}}) {
        Wobbled player({.tempo = 120.0});
        player.set("Wet Level", "-3 dB");
        player.set("XLFO 1 Frequency", "1 Hz");
        player.setStep(1, "-1", "1", curve);
        player.setStep(2, "1", "1", curve);
        player.set(control, from);
        player.reach("Dry Level", "0.3");
        std::vector<TimedEvent> events;
        for (int i = 0; i < 8; ++i)
            events.push_back(player.change(9000 + 21011 * i, control, i % 2 ? from : to));
        player.schedule(events);
        EXPECT_LT(signals::largestBend(player.play(signals::sine(20.0, 48000.0, 192000, 0.25))), 0.0019)
            << control;
    }
}

TEST(XLFO, SoundsTheSameInBlocksOfAnySize)
{
    for (const char* sync : {"Free", "1/8"}) {
        std::vector<std::vector<float>> outs;
        for (const std::uint32_t block : {32u, 441u, 4096u}) {
            Wobbled player({.block = block, .tempo = 133.0});
            player.set("XLFO 1 Sync Mode", sync);
            player.set("XLFO 1 Frequency", "3 Hz");
            player.set("Num Active XLFO 1 Steps", "5");
            for (int step = 1; step <= 5; ++step)
                player.setStep(step, step % 2 ? "0.4" : "-0.7", "0.5", "Sqr");
            player.reach("Dry Pan", "0.6");
            outs.push_back(player.play(steady(96000)));
        }
        EXPECT_LT(signals::largestDifference(outs[0], outs[1]), 1e-5) << sync;
        EXPECT_LT(signals::largestDifference(outs[0], outs[2]), 1e-5) << sync;
    }
}
