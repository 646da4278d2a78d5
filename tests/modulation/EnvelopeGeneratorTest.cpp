#include "modulation/EnvelopeGenerator.h"

#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace {

/// Lengths of successive blocks; 0 stands for random ones.
constexpr int cuttings[] = {1, 2, 3, 5, 7, 128, 0};

struct Note {
    int on, off;  // samples
};

struct Envelope : GraphFixture {
    explicit Envelope(float rate = 44100.0f)
    {
        environment.setSampleRate(rate);
        envelope.emplace(environment);
    }
    EnvelopeGenerator* operator->() { return &*envelope; }
    static void set(FloatParameterBus& bus, float value) { bus.parameter().setValue(value, 0.0f); }

    /// Plays with a gate that follows `notes`. `act` may change the envelope at the start of a block; blocks
    /// end at notes and at multiples of `grid`.
    std::vector<float> play(int samples, const std::vector<Note>& notes, int cutting,
                            const std::function<void(int)>& act = {}, int grid = 1000)
    {
        std::minstd_rand random(7);
        std::vector<float> out;
        for (int now = 0; now < samples;) {
            int end = std::min({samples, now + (cutting ? cutting : 1 + static_cast<int>(random() % 128)),
                                (now / grid + 1) * grid});
            for (const Note& note : notes) {
                for (const int edge : {note.on, note.off})
                    end = edge > now ? std::min(end, edge) : end;
                if (note.on == now)
                    envelope->openGate();
                if (note.off == now)
                    envelope->closeGate();
            }
            if (act)
                act(now);
            const std::vector<float> block = render(*envelope, end - now);
            out.insert(out.end(), block.begin(), block.end());
            now = end;
        }
        return out;
    }

    std::optional<EnvelopeGenerator> envelope;
};

float at(const std::vector<float>& signal, int place) { return signal[static_cast<std::size_t>(place)]; }

double polynomial(const std::array<double, 5>& c, double x)
{
    x = std::clamp(x, 0.0, 1.0);
    return ((((c[0] * x + c[1]) * x + c[2]) * x + c[3]) * x + c[4]) * x;
}
double rising(double x) { return polynomial({-3.0, 10.0, -12.625, 6.625, 0.0}, x); }
double falling(double x) { return polynomial({-0.525, 1.45, -0.825, -1.6, 2.5}, x); }

struct Times {
    float delay, attack, decay, sustain, hold, release;
};

/// The envelope of one note, from the definition of its stages, in samples since the note.
double expected(const Times& times, double rate, int gate, int t)
{
    const auto inFours = [rate](double seconds) {
        return std::ceil(std::floor(seconds * rate + 1e-3) / 4.0) * 4.0;
    };
    const auto open = [&](int k) {
        const double begun = k - inFours(times.delay);
        const double attack = inFours(times.attack);
        if (begun < attack)
            return begun < 0.0 ? 0.0 : rising(begun / attack);
        return 1.0 - (1.0 - times.sustain) * falling((begun - attack) / (times.decay * rate));
    };
    const int released = gate + static_cast<int>(times.hold * rate) / 4 * 4;
    if (t < released)
        return open(t);
    return open(released - 1) * (1.0 - falling((t - released) / (times.release * rate)));
}

void apply(EnvelopeGenerator& envelope, const Times& times)
{
    Envelope::set(envelope.delay, times.delay);
    Envelope::set(envelope.attack, times.attack);
    Envelope::set(envelope.decay, times.decay);
    Envelope::set(envelope.sustain, times.sustain);
    Envelope::set(envelope.hold, times.hold);
    Envelope::set(envelope.release, times.release);
}

constexpr Times quick{0.0f, EnvelopeGenerator::shortestSeconds, EnvelopeGenerator::shortestSeconds, 1.0f,
                      0.0f, EnvelopeGenerator::shortestSeconds};
constexpr Times plain{0.01f, 0.02f, 0.05f, 0.4f, 0.0f, 0.06f};

}  // namespace

TEST(EnvelopeGenerator, GoesThroughItsStagesHoweverBlocksAreCut)
{
    struct Row {
        Times times;
        int gate;  // samples
        float rate;
    };
    for (const Row& row :
         {Row{quick, 300, 44100.0f}, Row{plain, 5000, 44100.0f}, Row{plain, 5000, 96000.0f},
          Row{plain, 201, 44100.0f},                                       // let go during the delay
          Row{plain, 902, 44100.0f},                                       // and during the attack
          Row{plain, 1801, 48000.0f},                                      // and during the decay
          Row{{0.01f, 0.02f, 0.05f, 0.4f, 0.0501f, 0.03f}, 50, 44100.0f},  // the hold reaches the decay
          Row{{0.0f, 0.3f, 0.3f, 0.0f, 0.0f, 0.3f}, 60000, 192000.0f}}) {
        for (const int cutting : cuttings) {
            Envelope played(row.rate);
            apply(*played.envelope, row.times);
            const int start = 1001, length = static_cast<int>(row.rate * 0.5f) + row.gate;
            const auto out = played.play(start + length, {{start, start + row.gate}}, cutting);
            double worst = 0.0;
            for (int t = -start; t < length; ++t)
                worst =
                    std::max(worst, std::fabs(at(out, start + t) -
                                              (t < 0 ? 0.0 : expected(row.times, row.rate, row.gate, t))));
            EXPECT_LT(worst, 2e-6) << row.gate << " at " << row.rate << " in blocks of " << cutting;
            EXPECT_EQ(out.back(), 0.0f);
        }
    }
}

TEST(EnvelopeGenerator, IsTheSameForAllCuttingsWhileEverythingMoves)
{
    const auto play = [](int cutting) {
        Envelope played;
        const auto wave = [](float low, float high, double period) {
            return [=](std::uint64_t t) {
                return low + (high - low) *
                                 static_cast<float>(0.5 + 0.5 * std::sin(static_cast<double>(t) / period));
            };
        };
        FunctionProducer attack(played.environment, wave(0.01f, 0.1f, 700.0)),
            decay(played.environment, wave(0.05f, 0.3f, 900.0)),
            sustain(played.environment, wave(0.1f, 1.0f, 3000.0)),
            release(played.environment, wave(0.05f, 0.4f, 1100.0)),
            hold(played.environment, wave(0.0f, 0.05f, 5000.0)),
            delay(played.environment, wave(0.0f, 0.02f, 1300.0));
        played->attack.connect(&attack);
        played->decay.connect(&decay);
        played->sustain.connect(&sustain);
        played->release.connect(&release);
        played->hold.connect(&hold);
        played->delay.connect(&delay);
        return played.play(60000, {{0, 20000}, {23000, 24001}, {30000, 30500}, {31001, 55000}}, cutting);
    };
    const std::vector<float> reference = play(128);
    for (const int cutting : cuttings)
        EXPECT_LT(signals::largestDifference(play(cutting), reference), 1e-4) << cutting;
    EXPECT_LT(signals::largestStep(reference, 0, reference.size()), 0.01);
}

TEST(EnvelopeGenerator, StartsAndEndsWithItsTriggerHoweverBlocksAreCut)
{
    constexpr int rise = 1003, fall = 9002;
    for (const int cutting : cuttings) {
        Envelope played;
        apply(*played.envelope, plain);
        FunctionProducer level(played.environment,
                               [](std::uint64_t t) { return t >= rise && t < fall ? 0.5f : 0.1f; });
        Trigger trigger(played.environment);
        trigger.input = &level;
        Envelope::set(trigger.threshold, 0.4f);
        played->trigger = &trigger;
        const std::vector<float> out = played.play(20000, {}, cutting);
        // The start may come up to three samples early, and so may the end, 15 ms after the fall.
        const int gate = fall - rise + static_cast<int>(0.015 * 44100.0);
        for (int t = 0; t < 15000; ++t) {
            double low = 1.0, high = 0.0;
            for (int early = 0; early < 4; ++early)
                for (int longer = -3; longer < 4; ++longer) {
                    const double value = expected(plain, 44100.0, gate + longer, t + early);
                    low = std::min(low, value);
                    high = std::max(high, value);
                }
            const float found = at(out, rise + t);
            ASSERT_GT(found, low - 1e-5) << t << " in blocks of " << cutting;
            ASSERT_LT(found, high + 1e-5) << t << " in blocks of " << cutting;
        }
    }
}

TEST(EnvelopeGenerator, StartsAgainFromWhereItStands)
{
    // In the attack, in the decay, at rest on the sustain level, in the release.
    for (const int again : {700, 2000, 6000, 9000}) {
        Envelope played;
        apply(*played.envelope, {0.0f, 0.02f, 0.05f, 0.4f, 0.0f, 0.06f});
        const auto out = played.play(14000, {{0, 8000}, {again, 30000}}, 128);
        const auto restart = static_cast<std::size_t>(again);
        EXPECT_LT(signals::largestStep(out, 0, out.size()), 0.004);
        const double from = out[restart - 1];
        for (std::size_t k = 0; k < 884; ++k)
            ASSERT_NEAR(out[restart + k], from + (1.0 - from) * rising(static_cast<double>(k) / 884.0), 2e-6)
                << again;
    }
}

TEST(EnvelopeGenerator, TakesNewTimesInTheMidstOfAStageAndKeepsItsPlace)
{
    // Inputs are read every 64 samples from the start on.
    Envelope attacking;
    Envelope::set(attacking->attack, 0.1f);  // 4412 samples in fours
    auto out = attacking.play(3000, {{0, 9000}}, 128, [&](int now) {
        if (now == 1000)
            Envelope::set(attacking->attack, 0.04f);  // 1764 samples
    });
    const double place = 1024.0 / 4412.0;
    for (int t = 1024; t < 2370; ++t)
        ASSERT_NEAR(at(out, t), rising(place + (t - 1024) / 1764.0), 2e-6) << t;
    EXPECT_NEAR(out[2390], 1.0f, 1e-6);

    // A delay keeps what has passed of it. 0.1 s are 4410 samples, in fours 4412.
    struct Row {
        float seconds;
        int attackAt;
    };
    for (const auto& [seconds, attackAt] :
         {Row{0.2f, 8820}, Row{0.05f, 2208}, Row{0.01f, 1024}, Row{0.0f, 1024}}) {
        for (const int cutting : cuttings) {
            Envelope waiting;
            Envelope::set(waiting->delay, 0.1f);
            const float newDelay = seconds;
            out = waiting.play(9000, {{0, 20000}}, cutting, [&](int now) {
                if (now == 1000)
                    Envelope::set(waiting->delay, newDelay);
            });
            const auto first = std::find_if(out.begin(), out.end(), [](float x) { return x > 0.0f; });
            EXPECT_EQ(first - out.begin(), attackAt + 1) << seconds;  // the curve's first sample is 0
        }
    }
}

TEST(EnvelopeGenerator, GlidesToANewSustainLevelInTheDecayTime)
{
    for (const float to : {0.9f, 0.45f, 0.1f, 0.0f, 1.0f}) {
        Envelope played;
        apply(*played.envelope, {0.0f, 0.01f, 0.1f, 0.4f, 0.0f, 0.06f});
        const auto out = played.play(20000, {{0, 30000}}, 128, [&](int now) {
            if (now == 10000)
                Envelope::set(played->sustain, to);
        });
        const std::size_t read = 10048;  // the next multiple of 64
        for (std::size_t k = 0; k < 5000; ++k) {
            const double x = static_cast<double>(k) / 4410.0;
            const double part = to > 0.4f ? rising(x) : falling(x);
            ASSERT_NEAR(out[read + k], 0.4 + (to - 0.4) * part, 3e-6) << to << " " << k;
        }
    }
}

TEST(EnvelopeGenerator, ReleasesAsItsInputsAreWhenTheGateCloses)
{
    constexpr int closing = 5003;
    Envelope played;
    apply(*played.envelope, plain);
    Times then = plain;
    then.hold = 0.01f;
    then.release = 0.02f;
    const auto out = played.play(8000, {{0, closing}}, 128, [&](int now) {
        if (now == closing)
            apply(*played.envelope, then);
    });
    for (int t = 0; t < 8000; ++t)
        ASSERT_NEAR(at(out, t), expected(then, 44100.0, closing, t), 2e-6) << t;
}

TEST(EnvelopeGenerator, BendsARunningDecayToANewSustainLevel)
{
    struct Row {
        int read;  // samples; a multiple of 64
        float sustain, to;
    };
    for (const Row& row :
         {Row{1408, 0.4f, 0.6f}, Row{1408, 0.4f, 0.45f}, Row{1408, 0.4f, 0.35f}, Row{1408, 0.4f, 0.1f},
          Row{1408, 0.4f, 0.0f}, Row{1408, 0.4f, 0.9f}, Row{704, 0.0f, 0.96f}}) {
        Envelope played;
        // The attack takes 640 samples, the decay 4410.
        apply(*played.envelope, {0.0f, 0.01445f, 0.1f, row.sustain, 0.0f, 0.06f});
        const auto out = played.play(
            7000, {{0, 30000}}, 128,
            [&](int now) {
                if (now == row.read)
                    Envelope::set(played->sustain, row.to);
            },
            64);
        const double place = (row.read - 640) / 4410.0;
        const double level = 1.0 - (1.0 - row.sustain) * falling(place - 1.0 / 4410.0);
        // As much nearer as the goal is, so much further is the decay, but not beyond 0.95.
        const double nearer = std::fabs(row.sustain - level) - std::fabs(row.to - level);
        const double from = std::clamp(place + nearer, 0.0, 0.95);
        const auto shape = row.to > level ? rising : falling;
        for (int k = 0; k < 5000; ++k) {
            const double missing = (1.0 - shape(from + k / 4410.0)) / (1.0 - shape(from));
            ASSERT_NEAR(at(out, row.read + k), row.to + (level - row.to) * missing, 1e-5)
                << row.to << " " << k;
        }
    }
}

TEST(EnvelopeGenerator, RisesToASustainLevelThatWasRaisedAsTheAttackEnded)
{
    Envelope played;
    Envelope::set(played->sustain, 0.5f);
    const auto out = played.play(1000, {{0, 30000}}, 64, [&](int now) {
        if (now == 64)
            Envelope::set(played->sustain, 1.0f);
    });
    EXPECT_LE(*std::max_element(out.begin(), out.end()), 1.0f);
    EXPECT_EQ(out.back(), 1.0f);
}

TEST(EnvelopeGenerator, ReleasesFromWhereItStandsAfterAStartOfNoLength)
{
    Envelope played;
    apply(*played.envelope, {0.0f, 0.02f, 0.05f, 0.4f, 0.0f, 0.06f});
    FunctionProducer level(played.environment,
                           [](std::uint64_t t) { return t < 4000 || t == 5000 ? 1.0f : 0.0f; });
    Trigger trigger(played.environment);
    trigger.input = &level;
    trigger.holdMs.assign(0.0f);
    played->trigger = &trigger;
    const auto out = played.play(9000, {}, 128);
    EXPECT_LT(signals::largestStep(out, 0, out.size()), 0.004);
    EXPECT_EQ(out.back(), 0.0f);
}

TEST(EnvelopeGenerator, NeverJumpsWhenAParameterMoves)
{
    struct Row {
        FloatParameterBus EnvelopeGenerator::*bus;
        float values[3];
    };
    const Row rows[] = {{&EnvelopeGenerator::attack, {0.02f, 0.2f, 0.05f}},
                        {&EnvelopeGenerator::decay, {0.05f, 0.5f, 0.02f}},
                        {&EnvelopeGenerator::sustain, {0.4f, 1.0f, 0.0f}},
                        {&EnvelopeGenerator::release, {0.05f, 0.5f, 0.02f}},
                        {&EnvelopeGenerator::hold, {0.0f, 0.05f, 0.02f}},
                        {&EnvelopeGenerator::delay, {0.0f, 0.02f, 0.01f}},
                        {&EnvelopeGenerator::attackCurve, {0.2f, -0.7f, 0.8f}},
                        {&EnvelopeGenerator::decayCurve, {0.6f, -0.7f, 1.0f}},
                        {&EnvelopeGenerator::releaseCurve, {0.6f, -0.7f, 1.0f}}};
    for (const Row& row : rows) {
        // One note of 0.1 s after the other, and a change every 3.3 ms: all stages are met.
        for (const int grid : {147, 64, 500}) {
            Envelope played;
            apply(*played.envelope, {0.0f, 0.03f, 0.05f, 0.4f, 0.0f, 0.05f});
            std::vector<Note> notes;
            notes.reserve(12);
            for (int i = 0; i < 12; ++i)
                notes.push_back({i * 7000, i * 7000 + 4400});
            const auto out = played.play(
                84000, notes, 128,
                [&, turn = 0](int now) mutable {
                    if (now % grid == 0)
                        Envelope::set((*played.envelope).*row.bus, row.values[turn++ % 3]);
                },
                grid);
            const auto place = &row - rows;
            // 0.02 s are 882 samples, and no curve is steeper than 4; sustain may have to hurry.
            EXPECT_LT(signals::largestStep(out, 0, out.size()), place == 2 ? 0.02 : 0.006) << place;
            EXPECT_GT(*std::max_element(out.begin(), out.end()), place == 0 ? 0.3f : 0.99f) << place;
        }
    }
}

TEST(EnvelopeGenerator, StaysWithinItsRangeWhateverItsInputsSay)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::minstd_rand random(11);
    const float wild[] = {nan, infinity, -infinity, -1.0f, 0.0f, 0.3f, 1.0f, 1e30f};
    Envelope played;
    FunctionProducer chaos(played.environment, [&](std::uint64_t) { return wild[random() % 8]; });
    Trigger trigger(played.environment);
    trigger.input = &chaos;
    trigger.holdMs.assign(0.1f);
    trigger.threshold.connect(&chaos);
    played->trigger = &trigger;
    EnvelopeGenerator& envelope = *played.envelope;
    for (FloatParameterBus* bus :
         {&envelope.delay, &envelope.attack, &envelope.attackCurve, &envelope.decay, &envelope.decayCurve,
          &envelope.sustain, &envelope.release, &envelope.releaseCurve, &envelope.hold})
        bus->connect(&chaos);
    const auto out = played.play(200000, {{1000, 2000}, {50000, 50001}}, 0);
    for (const float x : out)
        ASSERT_TRUE(x >= -1e-6f && x <= 1.0f + 1e-6f) << x;
}

TEST(EnvelopeGenerator, CostsNothingAtRestAndIsFinishedForOneBlock)
{
    Envelope played;
    FunctionProducer attack(played.environment, [](std::uint64_t) { return 0.01f; });
    played->attack.connect(&attack);
    const auto runUnread = [&] {
        played.environment.nextGeneration();
        played.environment.run(128, false);
    };
    runUnread();
    EXPECT_TRUE(attack.runs.empty());
    EXPECT_TRUE(played->currentBlock().isConstant());

    played.play(900, {{0, 800}}, 128);  // with the shortest release, 64 samples
    EXPECT_FALSE(played->isMuted());
    runUnread();
    EXPECT_TRUE(played->isMuted());
    const std::size_t runs = attack.runs.size();
    runUnread();
    EXPECT_EQ(attack.runs.size(), runs);
    EXPECT_EQ(played->currentValue(), 0.0f);

    // Unread, it runs all the same.
    played->openGate();
    for (int i = 0; i < 8; ++i)
        runUnread();
    EXPECT_NEAR(played->displayValue(), 1.0f, 1e-6);
    played->reset();
    EXPECT_TRUE(played->isMuted());
    EXPECT_EQ(played.render(*played.envelope, 128), std::vector<float>(128));
}

TEST(EnvelopeGenerator, ReportsItsGateAtMostTenTimesASecond)
{
    Envelope played;
    // The level comes and goes 25 times a second.
    FunctionProducer level(played.environment, [](std::uint64_t t) { return t / 882 % 2 ? 1.0f : 0.0f; });
    Trigger trigger(played.environment);
    trigger.input = &level;
    played->trigger = &trigger;
    int reports = 0;
    played->gateChanged.addHandler(NotifyEvent::handler([&reports](void*) { ++reports; }));
    played.play(44100, {}, 128);
    EXPECT_GE(reports, 8);
    EXPECT_LE(reports, 10);

    // The last change is reported too, if late: a note of 20 ms at 1.2 s.
    Envelope single;
    FunctionProducer pulse(single.environment,
                           [](std::uint64_t t) { return t >= 52920 && t < 53802 ? 1.0f : 0.0f; });
    Trigger pulsed(single.environment);
    pulsed.input = &pulse;
    single->trigger = &pulsed;
    int changes = 0;
    single->gateChanged.addHandler(NotifyEvent::handler([&changes](void*) { ++changes; }));
    single.play(56000, {}, 128);
    EXPECT_EQ(changes, 1);
    single.play(4000, {}, 128);
    EXPECT_EQ(changes, 2);
}
