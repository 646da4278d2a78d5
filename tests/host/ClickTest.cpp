#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double toneHz = 20.0;
constexpr float toneAmplitude = 0.25f;

struct Move {
    const char* parameter;
    const char* from;
    const char* to;
    std::vector<std::pair<const char*, const char*>> before = {};
};

std::ostream& operator<<(std::ostream& out, const Move& move)
{
    return out << move.parameter << " from " << move.from << " to " << move.to;
}

class Click : public testing::TestWithParam<Move> {};

std::string testName(const testing::TestParamInfo<Move>& info)
{
    std::string name = std::to_string(info.index) + "_" + info.param.parameter;
    std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
    return name;
}

}  // namespace

// Every control that a user can move while a soft low tone plays, there and back. A fade of 20 ms of the
// whole signal bends it by up to 1 / 960; a click at -60 dBFS would be a bend of as much again.
TEST_P(Click, IsNotHeardWhenAControlMoves)
{
    const Move& move = GetParam();
    PluginPlayer player({.tempo = 120.0});
    const std::vector<std::pair<const char*, const char*>> ground = {
        {"Delay 1 Time", "350 ms"},        {"Delay 2 Time", "270 ms"},
        {"Delay 1 Feedback", "0.3"},       {"Delay 2 Feedback", "0.5"},
        {"Delay 1 Cross Feedback", "0.2"}, {"Delay 2 Cross Feedback", "0.1"},
        {"Delay 1 Pan", "-0.5"},           {"Wet Level", "-3 dB"}};
    for (const auto& [name, text] : ground)
        player.set(name, text);
    for (const auto& [name, text] : move.before)
        player.set(name, text);
    player.set(move.parameter, move.from);

    constexpr std::size_t length = 48000 * 7;
    std::vector<float> left = signals::sine(toneHz, 48000.0, length, toneAmplitude);
    std::vector<float> right = signals::sine(toneHz, 48000.0, length, -0.6 * toneAmplitude);
    std::vector<float> side = signals::sine(31.0, 48000.0, length, toneAmplitude);
    player.sideChain = {side.data(), side.data()};
    player.schedule({player.change(48000 * 3 + 55, move.parameter, move.to),
                     player.change(48000 * 5 + 77, move.parameter, move.from)});
    const auto out = player.play(left, right);
    constexpr double limit = 0.0019;
    EXPECT_LT(signals::largestBend(out.first), limit) << move;
    EXPECT_LT(signals::largestBend(out.second), limit) << move;
}

INSTANTIATE_TEST_SUITE_P(
    EveryControl, Click,
    testing::Values(
        Move{"Delay 1 Time", "350 ms", "500 ms"}, Move{"Delay 2 Time", "270 ms", "20 ms"},
        Move{"Delay 1 Time", "350 ms", "500 ms", {{"Delay Buffer Read Style", "Stretch"}}},
        Move{"Delay 2 Time", "270 ms", "20 ms", {{"Delay Buffer Read Style", "Stretch"}}},
        Move{"Delay 1 Offset", "1.0", "1.5", {{"Delay 1 Sync", "Half Note"}}},
        Move{"Delay 1 Sync", "Free", "Note"}, Move{"Delay 1 Sync", "Quarter Note", "Half Note"},
        Move{"Delay 1 Feedback", "0", "0.6"}, Move{"Delay 2 Cross Feedback", "0", "0.3"},
        Move{"Delay 1 Feedback Invert", "Normal", "Inverted"}, Move{"Delay 2 Pan", "0", "0.01"},
        Move{"Delay 2 Pan", "0", "1"}, Move{"Delay 2 Pan", "-1", "1"},
        Move{"Feedback Link", "Separate", "Linked"}, Move{"Delay Link", "Separate", "Linked"},
        Move{"Delay Buffer Read Style", "Tape", "Stretch"}, Move{"Delay Freeze", "Off", "On"},
        Move{"Input Level", "0 dB", "6 dB"}, Move{"Dry Level", "0 dB", "-INF dB"},
        Move{"Dry Pan", "0", "0.02"}, Move{"Dry Pan", "0", "-1"}, Move{"Wet Level", "-INF dB", "0 dB"},
        Move{"Wet Pan", "0", "0.02"}, Move{"Wet Pan", "0", "1"},
        Move{"Filter 1 Enabled", "Enabled", "Disabled", {{"Filter 1 Freq", "60 Hz"}}},
        Move{"Filter 2 Enabled", "Disabled", "Enabled", {{"Filter 2 Response", "HP"}}},
        Move{"Filter 1 Freq", "200 Hz", "40 Hz"}, Move{"Filter 1 Freq", "A8", "A1"},
        Move{"Filter 1 Pan", "0", "0.5", {{"Filter 1 Freq", "60 Hz"}}},
        Move{"Filter 1 Peak", "0", "0.4", {{"Filter 1 Freq", "60 Hz"}}},
        Move{"Filter 1 Response", "LP", "HP", {{"Filter 1 Freq", "40 Hz"}}},
        Move{"Filter 2 Response", "BP", "LP", {{"Filter 2 Freq", "40 Hz"}}},
        Move{"Filter 1 Slope", "12", "48", {{"Filter 1 Freq", "60 Hz"}}},
        Move{"Filter 1 Characteristic", "Tube", "Clean", {{"Filter 1 Freq", "60 Hz"}}},
        Move{"Filter 2 Characteristic", "Clean", "Morvelane Prime", {{"Filter 2 Freq", "50 Hz"}}},
        Move{"Filter 1 Characteristic", "Gentle", "Extreme", {{"Filter 1 Freq", "60 Hz"}}},
        Move{"Filter Routing",
             "Serial",
             "Parallel",
             {{"Filter 1 Freq", "60 Hz"}, {"Filter 2 Response", "HP"}, {"Filter 2 Freq", "15 Hz"}}},
        Move{"Filter Routing",
             "Parallel",
             "Per Channel",
             {{"Filter 1 Freq", "60 Hz"}, {"Filter 2 Response", "HP"}, {"Filter 2 Freq", "15 Hz"}}},
        Move{"Auto Mute Self-Osc", "Off", "On", {{"Filter 1 Freq", "60 Hz"}, {"Filter 1 Peak", "0.4"}}},
        Move{"Channel Mode", "Left/Right", "Mid/Side"}, Move{"Audition Signal", "Output", "Input"},
        Move{"Audition Signal", "Input", "Side Chain"}, Move{"Dry Enabled", "Enabled", "Disabled"}),
    testName);

// The read style is turned over while the time is on its way, when the two styles read at different places.
TEST(ReadStyle, TurnsOverInTheMiddleOfAGlideWithoutAClick)
{
    PluginPlayer player;
    player.set("Delay 1 Feedback", "0.4");
    std::vector<TimedEvent> events = {player.change(48000 * 2, "Delay 1 Time", "600 ms"),
                                      player.change(48000 * 3, "Delay 1 Time", "200 ms")};
    for (int i = 0; i < 40; ++i)
        events.push_back(
            player.change(48000 * 2 + 1777 * i, "Delay Buffer Read Style", i % 2 ? "Tape" : "Stretch"));
    player.schedule(events);
    const std::vector<float> out = player.play(signals::sine(toneHz, 48000.0, 48000 * 5, toneAmplitude));
    EXPECT_LT(signals::largestBend(out), 0.0019);
}
