#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

using Echoes = std::map<std::size_t, double>;  // sample and gain

/// Plays an impulse on the left channel only and expects exactly these echoes, and silence between them.
void expectEchoes(const std::vector<float>& out, const Echoes& echoes, double tolerance = 1e-6)
{
    for (std::size_t i = 0; i < out.size(); ++i) {
        const auto echo = echoes.find(i);
        ASSERT_NEAR(out[i], echo == echoes.end() ? 0.0 : echo->second, tolerance) << "at sample " << i;
    }
}

PluginPlayer::Stereo playImpulse(PluginPlayer& player, std::size_t length)
{
    return player.play(signals::impulse(length), std::vector<float>(length, 0.0f));
}

/// A player whose delays stand on their own sides, wet only and without filters.
void panApart(PluginPlayer& player)
{
    player.disableFilters();
    player.set("Dry Enabled", "Disabled");
    player.set("Delay 1 Pan", "-1");
    player.set("Delay 2 Pan", "1");
}

}  // namespace

TEST(Echo, OfTheDefaultTimeComesAtItsWholeSampleAtEveryRate)
{
    // The default of "Delay 1 Time" is 0.29333879 in single precision. On the curve's piece from (0.25, 0.05)
    // to (0.5, 0.16), over 5..5000 ms, that is 349.99996 ms: one sample short of 350 ms where 350 ms is a
    // whole number.
    const double value = 0.29333879f;
    const double ms = 5.0 + 4995.0 * (0.05 + (value - 0.25) * (0.16 - 0.05) / 0.25);
    for (double rate : {44100.0, 48000.0, 96000.0, 192000.0}) {
        PluginPlayer player({.sampleRate = rate});
        player.disableFilters();
        const auto delay = static_cast<std::size_t>(ms * rate / 1000.0);
        const auto [left, right] = playImpulse(player, delay + 1000);
        expectEchoes(left, {{0, 1.0}, {delay, 1.0}}, 0.0);
        expectEchoes(right, {{delay, 1.0}}, 0.0);  // a delay in the middle is heard on both sides
    }
}

TEST(Echo, FadesByThePowersOfItsFeedback)
{
    struct Row {
        const char* feedback;
        const char* invert;
        double gain;
    };
    for (const auto& [feedback, invert, gain] :
         {Row{"0.5", "Normal", 0.5}, Row{"0.9", "Inverted", -0.9}, Row{"2.0", "Normal", 1.0}}) {
        PluginPlayer player;
        panApart(player);
        player.set("Delay 1 Time", "100 ms");
        player.set("Delay 1 Feedback", feedback);
        player.set("Delay 1 Feedback Invert", invert);
        Echoes echoes;
        for (std::size_t n = 1; n <= 9; ++n)
            echoes[4800 * n] = std::pow(gain, static_cast<double>(n) - 1.0);
        const auto [left, right] = playImpulse(player, 48000);
        expectEchoes(left, echoes);
        expectEchoes(right, {});
    }
}

TEST(Echo, CrossesFromSideToSide)
{
    PluginPlayer player;
    panApart(player);
    player.set("Delay 1 Time", "100 ms");
    player.set("Delay 2 Time", "150 ms");
    player.set("Delay 1 Cross Feedback", "0.8");
    player.set("Delay 2 Cross Feedback", "0.5");
    const auto [left, right] = playImpulse(player, 30000);
    // Left after 4800; over to the right by 0.5 and 7200; back by 0.8 and 4800; over again.
    expectEchoes(left, {{4800, 1.0}, {16800, 0.4}, {28800, 0.16}});
    expectEchoes(right, {{12000, 0.5}, {24000, 0.2}});
}

TEST(Echo, FollowsTheFirstDelayWhereTheyAreLinked)
{
    PluginPlayer player;
    panApart(player);
    player.set("Delay 1 Time", "100 ms");
    player.set("Delay 2 Time", "210 ms");
    player.set("Delay 1 Feedback", "0.5");
    player.set("Delay 2 Feedback", "0.9");
    player.set("Delay 2 Feedback Invert", "Inverted");  // stays its own
    player.set("Delay Link", "Linked");
    player.set("Feedback Link", "Linked");
    const auto [left, right] = player.play(signals::impulse(20000), signals::impulse(20000));
    expectEchoes(left, {{4800, 1.0}, {9600, 0.5}, {14400, 0.25}, {19200, 0.125}});
    expectEchoes(right, {{4800, 1.0}, {9600, -0.5}, {14400, 0.25}, {19200, -0.125}});
}

TEST(Echo, LandsOnTheNotesOfTheSong)
{
    struct Row {
        const char* sync;
        const char* offset;
        double tempo;  // 0: the host tells none
        std::size_t samples;
    };
    for (const auto& [sync, offset, tempo, samples] :
         {Row{"Note", "1.0", 120.0, 24000}, Row{"Half Note", "1.0", 120.0, 12000},
          Row{"Quarter Note", "1.0", 96.0, 7500}, Row{"Two Notes", "1.0", 125.0, 46080},
          Row{"Note", "2.0", 120.0, 48000}, Row{"Two Notes", "2.0", 40.0, 240000},
          Row{"Half Note", "1.0", 0.0, 12000}, Row{"Quarter Note", "0.5", 1000.0, 360}}) {
        PluginPlayer player({.tempo = tempo > 0.0 ? std::optional(tempo) : std::nullopt});
        panApart(player);
        player.set("Delay 1 Sync", sync);
        player.set("Delay 1 Offset", offset);
        expectEchoes(playImpulse(player, samples + 100).first, {{samples, 1.0}});
    }
    PluginPlayer free;
    panApart(free);
    free.set("Delay 1 Time", "100 ms");
    free.set("Delay 1 Offset", "2.0");  // says nothing to a free delay
    expectEchoes(playImpulse(free, 6000).first, {{4800, 1.0}});
}

TEST(Echo, StandsInTheStereoFieldWhereItIsPanned)
{
    struct Row {
        const char* pan;
        double left, right;
    };
    for (const auto& [pan, leftGain, rightGain] :
         {Row{"0", 1.0, 1.0}, Row{"-1", 1.0, 0.0}, Row{"0.25", 0.75, 1.0}, Row{"1", 0.0, 1.0}}) {
        PluginPlayer player;
        panApart(player);
        player.set("Delay 1 Time", "100 ms");
        player.set("Delay 1 Pan", pan);
        const auto [left, right] = playImpulse(player, 6000);
        expectEchoes(left, {{4800, leftGain}});
        expectEchoes(right, {{4800, rightGain}});
    }
}

TEST(Echo, KeepsLevelsAndBalancesOfDryAndWet)
{
    PluginPlayer player;
    player.disableFilters();
    player.set("Input Level", "-12 dB");  // of what goes into the delays only
    player.set("Dry Level", "-6 dB");
    player.set("Dry Pan", "0.5");
    player.set("Wet Level", "-3 dB");
    player.set("Wet Pan", "-0.25");
    player.set("Delay 1 Time", "100 ms");
    const auto gain = [](double dB) { return std::pow(10.0, dB / 20.0); };
    const auto [left, right] = playImpulse(player, 6000);
    expectEchoes(left, {{0, gain(-6) * 0.5}, {4800, gain(-15)}}, 1e-5);
    expectEchoes(right, {{4800, gain(-15) * 0.75}}, 1e-5);
}

TEST(Echo, DelaysMidAndSideOnTheirOwn)
{
    PluginPlayer player;
    panApart(player);
    player.set("Channel Mode", "Mid/Side");
    player.set("Delay 1 Time", "100 ms");
    player.set("Delay 2 Time", "110 ms");
    // Left alone is mid 0.5 and side -0.5 (positive to the right); both come back as left - and right + side.
    const auto [left, right] = playImpulse(player, 6000);
    expectEchoes(left, {{4800, 0.5}, {5280, 0.5}});
    expectEchoes(right, {{4800, 0.5}, {5280, -0.5}});
}

TEST(Echo, LetsOneListenToInputAndSideChain)
{
    const std::vector<float> in = signals::noise(4000, 10);
    const std::vector<float> side = signals::noise(4000, 11);
    PluginPlayer player;
    player.set("Audition Signal", "Input");
    EXPECT_EQ(player.play(in), in);

    PluginPlayer other;
    other.set("Audition Signal", "Side Chain");
    EXPECT_EQ(other.play(in), std::vector<float>(4000, 0.0f));  // silent when there is nothing
    other.sideChain = {side.data(), side.data()};
    EXPECT_EQ(other.play(in), side);
}

TEST(Echo, FreezesTheLineAndRepeatsItWithoutLoss)
{
    for (const char* style : {"Tape", "Stretch"}) {
        PluginPlayer player;
        panApart(player);
        player.set("Delay Buffer Read Style", style);
        player.set("Delay 1 Time", "100 ms");
        player.play(signals::noise(48000, 12));
        player.schedule({player.change(0, "Delay Freeze", "On")});
        player.play(signals::noise(9600, 13));  // what is new fades out in 20 ms, and nothing more comes in
        const std::vector<float> loop = player.play(signals::noise(4800, 14));
        for (int round = 0; round < 50; ++round)
            ASSERT_EQ(player.play(signals::noise(4800, 15)), loop) << style << " round " << round;
        EXPECT_GT(signals::rms(loop, 0, 4800), 0.1);
    }
}

TEST(Echo, RingsOnWhenTheInputEnds)
{
    PluginPlayer player;
    player.disableFilters();
    player.set("Delay 1 Time", "100 ms");
    player.set("Delay 1 Feedback", "0.9");
    player.set("Delay 2 Feedback", "0");
    player.play(signals::noise(4800, 16));
    // A host that knows of the silence says so, by null channels here.
    std::vector<float> left(48000), right(48000);
    player.renderer().render({}, {}, left.data(), right.data(), 48000);
    EXPECT_NEAR(signals::rms(left, 43200, 48000) / signals::rms(left, 4800, 9600), std::pow(0.9, 8), 1e-3);
}
