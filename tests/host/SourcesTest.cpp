// Envelopes, followers and MIDI values as they sound through the built module.
#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

/// The dry signal alone, at a level that the first slot moves: from 0 up by the whole of its source.
struct Shaped : PluginPlayer {
    explicit Shaped(const std::string& source)
    {
        disableFilters();
        set("Wet Level", "-INF dB");
        set("Dry Level", "-INF dB");
        for (const char* list : {"EGs", "EFs", "MIDI Sources"})
            set(std::string("Num Active ") + list, "1");
        set("Num Active Slots", "1");
        set("Slot 1 Source", source);
        set("Slot 1 Target", "Dry Level");
        set("Slot 1 Level", "1");
    }
    TimedEvent midi(std::int64_t frame, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
    {
        return {renderer().position() + frame, midiEvent(0, status, data1, data2)};
    }
    /// What the level did, heard on a steady signal.
    std::vector<float> level(std::size_t frames, float signal = 0.5f)
    {
        std::vector<float> out = play(std::vector<float>(frames, signal));
        for (float& sample : out)
            sample /= signal;
        return out;
    }
};

/// P(x) of the falling stages.
double falling(double x) { return x * (2.5 + x * (-1.6 + x * (-0.825 + x * (1.45 - 0.525 * x)))); }

}  // namespace

TEST(Sources, NotesPlayAnEnvelopeUntilTheLastOneIsLetGo)
{
    Shaped player("EG 1");
    player.set("EG 1 Triggering", "MIDI");
    player.set("EG 1 Sustain", "-6.0206 dB");
    player.set("EG 1 Decay", "0.5 sec");
    player.set("EG 1 Release", "1 sec");
    player.schedule({player.midi(1000, 0x90, 60, 100), player.midi(40000, 0x90, 64, 100),
                     player.midi(50000, 0x80, 60, 0), player.midi(60000, 0x80, 64, 0)});
    const auto out = player.level(120000);
    // An attack of the shortest length is 72 samples here, in whole groups.
    EXPECT_EQ(*std::max_element(out.begin(), out.begin() + 1000), 0.0f);
    EXPECT_NEAR(out[1000 + 72], 1.0f, 2e-3);
    double worst = 0.0;
    for (int i = 100; i < 23000; ++i)
        worst = std::max(worst, std::fabs(out[static_cast<std::size_t>(1000 + 72 + i)] -
                                          (1.0 - 0.5 * falling(i / 24000.0))));
    EXPECT_LT(worst, 3e-3);
    EXPECT_NEAR(out[39000], 0.5f, 1e-3);
    EXPECT_NEAR(out[40000 + 72], 1.0f, 2e-3);  // the second note starts it over, from where it stands
    EXPECT_GT(out[40002], 0.49f);
    EXPECT_LT(signals::largestStep(out, 1100, 120000), 0.05);
    // The first note's end changes nothing, the second one's lets go.
    worst = 0.0;
    const float held = out[59999];
    for (int i = 100; i < 47000; ++i)
        worst = std::max(
            worst, std::fabs(out[static_cast<std::size_t>(60000 + i)] - held * (1.0 - falling(i / 48000.0))));
    EXPECT_LT(worst, 5e-3);
    EXPECT_EQ(out[110000], 0.0f);
}

TEST(Sources, TheChosenInputTriggersAnEnvelopeAndMovesAFollower)
{
    // A second of silence, one of a tone, one of silence.
    std::vector<float> burst(144000, 0.0f);
    for (std::size_t i = 48000; i < 96000; ++i)
        burst[i] = 0.5f * std::sin(0.05f * static_cast<float>(i));
    const std::vector<float> steady(burst.size(), 0.01f);  // stays below the threshold
    struct Row {
        const char* source;
        const char* parameter;
        const char* normal;
        const char* sideChain;
    };
    for (const auto& [source, parameter, normal, sideChain] :
         {Row{"EG 1", "EG 1 Triggering", "Normal Input", "Side Chain"},
          Row{"EF 1", "EF 1Input", "Normal Input", "Side Chain"}}) {
        for (const bool beside : {false, true}) {
            Shaped player(source);
            player.set(parameter, beside ? sideChain : normal);
            player.sideChain = {burst.data(), burst.data()};
            const auto out = player.play(steady);
            const auto heard = [&](std::size_t at) { return std::fabs(out[at] / 0.01f); };
            // A follower of the steady signal, at -40 dB, stands at a third of its scale, times its depth.
            const float still = source[1] == 'G' || beside ? 0.0f : 2.0f / 3.0f;
            EXPECT_NEAR(heard(47000), still, 2e-3) << source << beside;
            EXPECT_NEAR(heard(95000), beside ? 1.0f : still, 0.02) << source << beside;
            EXPECT_NEAR(heard(143000), still, 2e-3) << source << beside;
        }
    }
}

TEST(Sources, MidiValuesMoveTheirTargetsAtTheirSamples)
{
    struct Row {
        const char* input;
        const char* curve;
        std::uint8_t status, data1, data2;
        double expected;
    };
    for (const auto& [input, curve, status, data1, data2, expected] :
         {Row{"Mod Wheel", "Linear", 0xB0, 1, 64, 64 / 127.0},
          Row{"Mod Wheel", "Sqr", 0xB3, 1, 64, 64 * 64 / 127.0 / 127.0},
          Row{"Controller", "Linear", 0xB0, 74, 127, 1.0}, Row{"Controller", "Linear", 0xB0, 75, 127, 0.0},
          Row{"Velocity", "Linear", 0x90, 60, 96, 96 / 127.0 * 2.0 - 1.0},
          Row{"Aftertouch", "Linear", 0xD0, 32, 0, 32 / 127.0},
          Row{"Aftertouch", "Sqrt", 0xA0, 60, 32, std::sqrt(32 / 127.0)},
          Row{"Pitch Bend", "Linear", 0xE0, 0, 96, 2.0 * (96 * 128 * 6.103888e-05 - 0.5)},
          Row{"KB Track", "Linear", 0x90, 108, 1, 0.5}}) {
        Shaped player("MIDI 1");
        player.set("MIDI Source 1 Input", input);
        player.set("MIDI Source 1 Controller Number", "74");
        player.set("MIDI Source 1 Response Curve", curve);
        player.schedule({player.midi(3000, status, data1, data2)});
        const auto out = player.level(12000);
        EXPECT_NEAR(out[2999], 0.0f, 1e-3) << input;
        EXPECT_NEAR(out[11999], expected, 1e-3) << input << ' ' << curve;
        if (expected > 0.0) {
            EXPECT_GT(out[3100], out[2999]) << input;
        }
        EXPECT_LT(signals::largestStep(out, 0, 12000), 0.01) << input;
    }
}
