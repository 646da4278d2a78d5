#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// Plays without filters, both delays on their own sides; slots are set by their texts.
struct Modulated : PluginPlayer {
    Modulated()
    {
        disableFilters();
        set("Delay 1 Time", "100 ms");
        set("Delay 2 Time", "100 ms");
        set("Delay 1 Pan", "-1");
        set("Delay 2 Pan", "1");
        set("Num Active XY Controllers", "4");
        set("Num Active Slots", "24");
    }
    void connect(int slot, const char* source, const char* target, const char* level)
    {
        const std::string name = "Slot " + std::to_string(slot) + " ";
        set(name + "Source", source);
        set(name + "Target", target);
        set(name + "Level", level);
    }
    Stereo playImpulse(std::size_t length)
    {
        return play(signals::impulse(length), std::vector<float>(length, 0.0f));
    }
    /// The gain of the dry path, once everything has settled.
    double dryGain()
    {
        play(std::vector<float>(12000, 0.0f));
        return play(signals::impulse(100))[0];
    }
};

}  // namespace

TEST(Modulation, IsHeardByItsClosedForm)
{
    struct Row {
        const char* target;
        const char* parameter;
        const char* base;
        const char* axis;  // value of the source
        const char* level;
        double dry, left, right;  // gains of the input on the left, and of its first echo on both sides
    };
    for (const auto& [target, parameter, base, axis, level, dry, left, right] : {
             Row{"Dry Level", "Dry Level", "-INF dB", "0.5", "0.5", 0.25, 1.0, 0.0},
             Row{"Dry Pan", "Dry Pan", "0", "0.5", "0.5", 0.5, 1.0, 0.0},
             Row{"Wet Level", "Wet Level", "-INF dB", "0.6", "0.5", 1.0, 0.3, 0.0},
             Row{"Wet Pan", "Wet Pan", "0.25", "0.5", "0.25", 1.0, 0.5, 0.0},
             Row{"Delay 1 Pan", "Delay 1 Pan", "-1", "1", "0.75", 1.0, 0.5, 1.0},
             Row{"Input Level", "Input Level", "0 dB", "0.5", "0.1", 1.0, 1.0 + 63.079887 * 0.05, 0.0},
             Row{"Input Level", "Input Level", "0 dB", "-1", "1", 1.0, 0.015848933, 0.0},
         }) {
        Modulated player;
        player.set(parameter, base);
        player.set("XY Controller 1 Hor", axis);
        player.connect(1, "XY 1 Hor", target, level);
        const auto out = player.playImpulse(6000);
        EXPECT_NEAR(out.first[0], dry, 1e-4) << target;
        EXPECT_NEAR(out.first[4799] + out.first[4800], left, 4e-4 * (1.0 + left)) << target;
        EXPECT_NEAR(out.second[4799] + out.second[4800], right, 1e-4) << target;
    }
}

TEST(Modulation, OfFeedbackEndsAtUnityAndOfCrossFeedbackAtTwo)
{
    Modulated player;
    player.set("XY Controller 4 Ver", "1");
    player.connect(24, "XY 4 Ver", "Delay 1 Feedback", "1");
    player.connect(2, "XY 4 Ver", "Delay 2 Cross Feedback", "1");
    const auto [left, right] = player.playImpulse(11000);
    const auto around = [](const std::vector<float>& out, std::size_t place) {
        double sum = 0.0;
        for (std::size_t i = place - 3; i < place + 2; ++i)
            sum += out[i];
        return sum;
    };
    EXPECT_NEAR(around(left, 4800), 1.0, 1e-4);
    EXPECT_NEAR(around(left, 9600), 1.0, 1e-4);
    EXPECT_NEAR(around(right, 9600), 2.0, 1e-4);
}

TEST(Modulation, OfADelayTimeMovesTheEcho)
{
    Modulated player;
    player.set("XY Controller 1 Ver", "0.2");
    player.connect(1, "XY 1 Ver", "Delay 1 Time", "0.1");
    // 100 ms and 4995 * 0.02: 199.9 ms are 9595.2 samples, of which a line at rest takes the whole ones.
    const auto left = player.playImpulse(11000).first;
    EXPECT_EQ(left[9595], 1.0f);
    EXPECT_EQ(left[4800], 0.0f);
}

TEST(Modulation, TurnsRoundGoesAndComesBack)
{
    Modulated player;
    player.set("Dry Level", "-6.0206 dB");  // a gain of 0.5
    player.set("XY Controller 1 Hor", "0.5");
    player.connect(1, "XY 1 Hor", "Dry Level", "0.5");
    EXPECT_NEAR(player.dryGain(), 0.75, 1e-4);
    player.set("Slot 1 Inverted", "Inverted");
    EXPECT_NEAR(player.dryGain(), 0.25, 1e-4);
    player.set("Slot 1 Bypassed", "Bypassed");
    EXPECT_NEAR(player.dryGain(), 0.5, 1e-4);
    player.set("Slot 1 Inverted", "Normal");
    player.set("Slot 1 Bypassed", "Normal");
    EXPECT_NEAR(player.dryGain(), 0.75, 1e-4);
    player.set("Slot 1 Target", "Wet Level");
    EXPECT_NEAR(player.dryGain(), 0.5, 1e-4);
    player.set("Slot 1 Target", "Dry Level");
    player.set("Slot 1 Source", "< Source >");
    EXPECT_NEAR(player.dryGain(), 0.5, 1e-4);
    player.set("Slot 1 Source", "XLFO 1");  // the axis is gone, whatever the new source does
    player.set("Slot 1 Source", "XY 3 Ver");
    player.set("XY Controller 3 Ver", "-1");
    EXPECT_NEAR(player.dryGain(), 0.0, 1e-4);
}

TEST(Modulation, RunsThroughAChainOfLevels)
{
    Modulated player;
    player.set("Dry Level", "-INF dB");
    player.set("XY Controller 1 Hor", "1");
    player.set("XY Controller 1 Ver", "0.5");
    player.set("XY Controller 2 Hor", "-0.5");
    player.connect(1, "XY 1 Hor", "Dry Level", "0.2");
    player.connect(2, "XY 1 Ver", "Slot 1 Level", "0.6");
    player.connect(3, "XY 2 Hor", "Slot 2 Level", "0.4");
    // Slot 2 reaches by 0.6 - 0.5 * 0.4, slot 1 by 0.2 + 0.5 * 0.4.
    EXPECT_NEAR(player.dryGain(), 0.4, 1e-4);
    player.set("Slot 3 Inverted", "Inverted");  // 0.2 + 0.5 * 0.8
    EXPECT_NEAR(player.dryGain(), 0.6, 1e-4);
}

TEST(Modulation, MayOvershootAndCancel)
{
    Modulated player;
    player.set("Dry Level", "-6.0206 dB");
    player.set("XY Controller 1 Hor", "1");
    player.connect(1, "XY 1 Hor", "Dry Level", "0.9");
    EXPECT_NEAR(player.dryGain(), 1.0, 1e-4);
    player.connect(2, "XY 1 Hor", "Dry Level", "0.8");
    player.set("Slot 2 Inverted", "Inverted");
    EXPECT_NEAR(player.dryGain(), 0.6, 1e-4);
}

TEST(Modulation, HoldsACircleOffUntilItIsBroken)
{
    Modulated player;
    player.set("Dry Level", "-INF dB");
    player.set("XY Controller 1 Hor", "0.5");
    player.set("XY Controller 1 Ver", "1");
    player.connect(1, "XY 1 Hor", "Slot 2 Level", "0.2");
    player.connect(2, "XY 1 Ver", "Slot 1 Level", "0.4");
    EXPECT_EQ(player.dryGain(), 0.0);
    player.set("Slot 1 Target", "Dry Level");  // 0.5 * (0.2 + 0.4), with the second slot back to life
    EXPECT_NEAR(player.dryGain(), 0.3, 1e-4);
    player.set("Slot 2 Target", "Slot 2 Level");
    EXPECT_NEAR(player.dryGain(), 0.1, 1e-4);
}

// A fade of 20 ms of the whole signal bends the tone by up to 1 / 960; a click at -60 dBFS would be a bend of
// as much again.
TEST(Modulation, IsNotHeardToClickWhenAnAxisMoves)
{
    struct Row {
        const char* target;
        const char* level;
    };
    for (const auto& [target, level] :
         {Row{"Dry Level", "0.2"}, Row{"Dry Pan", "0.2"}, Row{"Wet Level", "0.2"}, Row{"Wet Pan", "0.2"},
          Row{"Delay 1 Time", "0.02"},  // over 150 ms, which a tape bends the tone for
          Row{"Delay 2 Feedback", "0.2"}, Row{"Delay 1 Cross Feedback", "0.1"}, Row{"Delay 2 Pan", "0.2"},
          Row{"Slot 2 Level", "0.2"}}) {
        Modulated player;
        player.set("Wet Level", "-3 dB");
        player.set("Dry Level", "-3 dB");
        player.set("Delay 1 Feedback", "0.3");
        player.set("Delay 2 Feedback", "0.4");
        player.set("XY Controller 2 Ver", "0.3");
        player.connect(1, "XY 2 Hor", target, level);
        player.connect(2, "XY 2 Ver", "Wet Level", "0.3");
        std::vector<TimedEvent> events;
        events.reserve(24);
        for (int i = 0; i < 12; ++i)
            events.push_back(player.change(48000 + 9111 * i, "XY Controller 2 Hor", i % 2 ? "-1" : "0.5"));
        player.schedule(events);
        const auto out = player.play(signals::sine(20.0, 48000.0, std::size_t{48000} * 4, 0.25),
                                     signals::sine(20.0, 48000.0, std::size_t{48000} * 4, -0.15));
        EXPECT_LT(signals::largestBend(out.first), 0.0019) << target;
        EXPECT_LT(signals::largestBend(out.second), 0.0019) << target;
    }
}

TEST(Modulation, ComesAndGoesWithoutAClickWhereItAddsNothing)
{
    for (const char* target : {"Dry Level", "Dry Pan", "Wet Pan", "Delay 1 Time", "Delay 2 Feedback"}) {
        Modulated player;
        player.set("Dry Pan", "-0.4");
        player.set("Wet Pan", "0.3");
        player.set("Delay 2 Feedback", "0.4");
        player.set("Slot 1 Level", "0");
        player.set("Slot 1 Source", "XY 1 Hor");
        player.set("XY Controller 1 Hor", "1");
        std::vector<TimedEvent> events;
        events.reserve(24);
        for (int i = 0; i < 12; ++i) {
            events.push_back(player.change(48000 + 4777 * i, "Dry Pan", i % 2 ? "-0.4" : "0.2"));
            events.push_back(
                player.change(48000 + 4777 * i + 1900, "Slot 1 Target", i % 2 ? "< Target >" : target));
        }
        player.schedule(events);
        const auto out = player.play(signals::sine(20.0, 48000.0, std::size_t{48000} * 3, 0.25));
        EXPECT_LT(signals::largestBend(out), 0.0019) << target;
    }
}
