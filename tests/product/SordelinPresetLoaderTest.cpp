#include "SordelinPresetFixture.h"

#include <cmath>
#include <numbers>

namespace {

using Names = std::vector<std::string>;

// The places in files of the first product.
struct First {
    static constexpr int delay(int k) { return 3 * k; }  // time, offset, sync
    static constexpr int links = 6;                      // delay, the read style, and the filters' routing
    static constexpr int feedback = 9;                   // level A, balance A, level B, balance B
    static constexpr int levels = 13;
    static constexpr int filter(int k) { return 18 + 7 * k; }
    static constexpr int lfo(int k) { return 32 + 6 * k; }
    static constexpr int receiveMidi = 44;
    static constexpr int slot(int k) { return 45 + 5 * k; }
    static constexpr int count = 150;
};

// And of the one that followed.
struct Previous {
    static constexpr int delay(int k) { return 6 * k; }  // as before, feedback, cross feedback, pan
    static constexpr int links = 12;                     // feedback, delay, and the read style
    static constexpr int filter(int k) { return 15 + 7 * k; }
    static constexpr int routing = 29;  // and the levels
    static constexpr int lfo(int k) { return 35 + 7 * k; }
    static constexpr int envelope = 49;
    static constexpr int receiveMidi = 55;
    static constexpr int slot(int k) { return 56 + 5 * k; }
    static constexpr int autoMute = 178;  // and the dry signal
    static constexpr int count = 180;
};

/// The values of an old file, by their places.
struct OldValues {
    explicit OldValues(int count) : values(static_cast<std::size_t>(count), 0.0f) {}
    void put(int place, const std::vector<float>& from)
    {
        std::copy(from.begin(), from.end(), values.begin() + place);
    }
    std::vector<float> values;
};

struct SordelinPresetLoaderTest : SordelinPresetFixture {
    void loadFirst(const OldValues& old)
    {
        const ErrorResult result = load(presetBytes("MDly", 1, old.values));
        EXPECT_TRUE(result.succeeded()) << result.message();
    }
    void loadPrevious(const OldValues& old, int count = Previous::count)
    {
        std::vector<float> values = old.values;
        values.resize(static_cast<std::size_t>(count));
        const ErrorResult result = load(presetBytes("MSlg", 2, values));
        EXPECT_TRUE(result.succeeded()) << result.message();
    }
    /// Today's defaults, as values of a file.
    std::vector<float> defaults() const
    {
        std::vector<float> all;
        for (int i = 0; i < plugin.parameterCount(); ++i)
            all.push_back(plugin.parameter(i).defaultValue());
        return all;
    }
    std::vector<float> range(int first, int count) const
    {
        std::vector<float> all;
        for (int i = first; i < first + count; ++i)
            all.push_back(value(i));
        return all;
    }
};

TEST_F(SordelinPresetLoaderTest, TheFirstProductsParametersFindTheirPlaces)
{
    scatter(1);
    set(freeze, 1.0f);
    set(dry, 0.0f);
    OldValues old(First::count);
    old.put(First::delay(0), {0.5f, 0.25f, 2.0f});
    old.put(First::delay(1), {0.25f, -0.5f, 4.0f});
    old.put(First::links, {1.0f, 1.0f, 2.0f});
    old.put(First::feedback, {0.8f, 0.25f, 0.4f, -0.5f});
    old.put(First::levels, {-6.0f, 0.9f, -0.1f, 0.8f, 0.2f});
    old.put(First::filter(0), {0.3f, -1.5f, 0.6f, 10.0f, 1.0f, 3.0f, 1.0f});
    old.put(First::filter(1), {0.4f, 1.5f, 0.7f, 9.0f, 2.0f, 2.0f, 0.0f});
    old.put(First::receiveMidi, {1.0f});
    const std::string bytes = presetBytes("MDly", 1, old.values);
    ASSERT_EQ(bytes.size(), 612u);
    loadFirst(old);

    // The knob's curve takes 0.5 to 0.16 and 0.25 to 0.05 of 5 s: 800 and 250 ms. Today that is 795 and 245
    // of 4995 ms above 5: 0.15916 and 0.049049, between the curve's points (0.25, 0.05) and (0.5, 0.16), and
    // between (0.1, 0.002) and (0.25, 0.05).
    EXPECT_NEAR(value(0), 0.498089f, 1e-6f);
    EXPECT_NEAR(value(7), 0.247028f, 1e-6f);
    EXPECT_NEAR(plugin.delays[0].time.valueToSignal(value(0)), 800.0f, 1e-3f);
    EXPECT_EQ(range(1, 2), (std::vector<float>{0.25f, 2.0f}));
    EXPECT_EQ(range(8, 2), (std::vector<float>{-0.5f, 4.0f}));
    EXPECT_FLOAT_EQ(value(3), 0.6f);   // 0.8 (1 - 0.25)
    EXPECT_FLOAT_EQ(value(10), 0.8f);  // 0.8 (1 + 0)
    EXPECT_FLOAT_EQ(value(4), 0.4f);   // 0.4 (1 - 0)
    EXPECT_FLOAT_EQ(value(11), 0.2f);  // 0.4 (1 - 0.5)
    EXPECT_EQ(value(6), -1.0f);
    EXPECT_EQ(value(13), 1.0f);
    EXPECT_EQ(range(14, 3), (std::vector<float>{0.0f, 1.0f, 1.0f}));
    EXPECT_EQ(range(18, 7), (std::vector<float>{0.3f, -1.5f, 0.6f, 10.0f, 1.0f, 3.0f, 1.0f}));
    EXPECT_EQ(range(25, 7), (std::vector<float>{0.4f, 1.5f, 0.7f, 9.0f, 2.0f, 2.0f, 0.0f}));
    EXPECT_EQ(range(32, 7), (std::vector<float>{2.0f, -6.0f, 0.9f, -0.1f, 0.8f, 0.2f, 0.0f}));
    EXPECT_EQ(value(580), 1.0f);
    EXPECT_EQ(value(freeze), 1.0f);
    EXPECT_EQ(value(dry), 0.0f);
    // No slots, so no sources that would drive them; all else is as new.
    const std::vector<float> fresh = defaults();
    for (int i = 39; i < 582; ++i)
        if (i != 580) {
            EXPECT_EQ(value(i), fresh[static_cast<std::size_t>(i)]) << plugin.parameter(i).displayName();
        }
    EXPECT_EQ(value(702), 0.0f);
    EXPECT_EQ(value(703), 0.0f);
}

TEST_F(SordelinPresetLoaderTest, TheFirstProductsSlotsFollowTheirSources)
{
    OldValues old(First::count);
    old.put(First::lfo(0), {0.3f, 3.0f, -0.25f, 4.0f, 1.0f, 1.0f});
    old.put(First::lfo(1), {0.4f, 1.0f, 0.5f, 7.0f, 0.0f, 0.0f});
    // Source, level, bypassed, inverted, target; 0 is none and n the old number n - 1.
    old.put(First::slot(0), {1.0f, 0.5f, 0.0f, 1.0f, 5.0f});    // LFO 1, feedback
    old.put(First::slot(1), {4.0f, 0.25f, 1.0f, 0.0f, 22.0f});  // mod wheel, level of slot 1
    old.put(First::slot(2), {3.0f, 0.5f, 0.0f, 0.0f, 12.0f});   // pitch bend, filter 2
    old.put(First::slot(3), {1.0f, 0.5f, 0.0f, 0.0f, 6.0f});    // a balance, which is gone
    old.put(First::slot(4), {2.0f, 0.5f, 0.0f, 0.0f, 0.0f});    // LFO 2, nothing
    loadFirst(old);
    EXPECT_EQ(connections(),
              (Names{"XLFO 1 > Delay 1 Feedback", "MIDI 1 > Filter 2 Freq", "MIDI 2 > Slot 1 Level",
                     "XLFO 1 > Delay 2 Feedback", "MIDI 2 > Slot 4 Level"}));
    // The knob's curve takes 0.5 to 0.16, and 0.25 to 0.05.
    const float levels[] = {0.16f, 0.08f, 0.05f, 0.16f, 0.05f};  // the pitch bend's reach has doubled
    for (int slot = 0; slot < 5; ++slot) {
        EXPECT_NEAR(level(slot), levels[slot], 1e-6f) << slot;
        EXPECT_EQ(plugin.slots[slot].inverted.value(), slot == 0 || slot == 3) << slot;
        EXPECT_EQ(plugin.slots[slot].bypassed.value(), slot == 2 || slot == 4) << slot;
    }
    EXPECT_EQ(value(48), 1.0f);   // LFO 2 drives nothing
    EXPECT_EQ(value(487), 0.0f);  // and there was no envelope
    EXPECT_EQ(value(549), 2.0f);
    EXPECT_EQ(value(550), 1.0f);
    EXPECT_EQ(value(553), 0.0f);
    EXPECT_EQ(value(49), 0.3f);
    EXPECT_EQ(value(50), -0.25f);
    EXPECT_EQ(value(54), 5.0f);
    EXPECT_EQ(value(55), 1.0f);
    EXPECT_EQ(value(57), 2.0f);
}

TEST_F(SordelinPresetLoaderTest, FeedbackSlotsThatHaveNoRoomForTheirCopiesGo)
{
    OldValues old(First::count);
    for (int slot = 0; slot < 21; ++slot)
        old.put(First::slot(slot), {1.0f, 0.5f, 0.0f, 0.0f, slot < 10 ? 5.0f : 7.0f});
    loadFirst(old);
    // 21 of 24 are taken, so that three have room.
    EXPECT_EQ(connections(),
              (Names{"XLFO 1 > Delay 1 Feedback", "XLFO 1 > Delay 1 Feedback", "XLFO 1 > Delay 1 Feedback",
                     "XLFO 1 > Delay 2 Feedback", "XLFO 1 > Delay 2 Feedback", "XLFO 1 > Delay 2 Feedback"}));
}

TEST_F(SordelinPresetLoaderTest, OldNumbersOfSourcesAndTargetsAreTodays)
{
    // Each target by its name, or none; a slot keeps its own target while it has none of its old one.
    const Names firstNames = {"Delay 1 Time",
                              "Delay 1 Offset",
                              "Delay 2 Time",
                              "Delay 2 Offset",
                              "Delay 1 Feedback",
                              "",
                              "Delay 1 Cross Feedback",
                              "",
                              "Filter 1 Freq",
                              "Filter 1 Pan",
                              "Filter 1 Peak",
                              "Filter 2 Freq",
                              "Filter 2 Pan",
                              "Filter 2 Peak",
                              "XLFO 1 Freq",
                              "XLFO 2 Freq",
                              "Input Level",
                              "Dry Level",
                              "Dry Pan",
                              "Wet Level",
                              "Wet Pan"};
    const Names firstSources = {"XLFO 1", "XLFO 2", "MIDI 1", "MIDI 2"};
    const Names previousNames = {"Delay 1 Time",
                                 "Delay 1 Offset",
                                 "Delay 1 Feedback",
                                 "Delay 1 Cross Feedback",
                                 "Delay 1 Pan",
                                 "Delay 2 Time",
                                 "Delay 2 Offset",
                                 "Delay 2 Feedback",
                                 "Delay 2 Cross Feedback",
                                 "Delay 2 Pan",
                                 "Filter 1 Freq",
                                 "Filter 1 Pan",
                                 "Filter 1 Peak",
                                 "Filter 2 Freq",
                                 "Filter 2 Pan",
                                 "Filter 2 Peak",
                                 "XLFO 1 Freq",
                                 "XLFO 2 Freq",
                                 "EG 1 Attack",
                                 "EG 1 Decay",
                                 "EG 1 Sustain",
                                 "EG 1 Release",
                                 "Input Level",
                                 "Dry Level",
                                 "Dry Pan",
                                 "Wet Level",
                                 "Wet Pan"};
    const Names previousSources = {"XLFO 1", "XLFO 2", "EG 1",   "MIDI 1",
                                   "MIDI 2", "MIDI 3", "MIDI 4", "MIDI 5"};
    const auto check = [this](bool isFirst, const Names& sources, const Names& targets) {
        for (std::size_t target = 0; target < targets.size(); ++target) {
            OldValues old(isFirst ? First::count : Previous::count);
            // Every source is used, so that none is taken out.
            for (std::size_t source = 0; source < sources.size(); ++source) {
                const int slot = static_cast<int>(source);
                old.put(isFirst ? First::slot(slot) : Previous::slot(slot),
                        {static_cast<float>(source + 1), 0.5f, 0.0f, 0.0f, static_cast<float>(target + 1)});
            }
            isFirst ? loadFirst(old) : loadPrevious(old);
            Names expected;
            for (const std::string& source : sources)
                expected.push_back(source + " > " + targets[target]);
            Names found = connections();
            found.resize(std::min(found.size(), expected.size()));
            EXPECT_EQ(found, targets[target].empty() ? Names{} : expected);
        }
    };
    check(true, firstSources, firstNames);
    check(false, previousSources, previousNames);
}

TEST_F(SordelinPresetLoaderTest, ThePreviousProductsParametersFindTheirPlaces)
{
    OldValues old(Previous::count);
    old.put(Previous::delay(0), {1.0f, 0.25f, 2.0f, 0.3f, 0.4f, -0.5f});
    old.put(Previous::delay(1), {0.0f, -0.5f, 4.0f, 0.6f, 0.7f, 0.8f});
    old.put(Previous::links, {1.0f, 1.0f, 1.0f});
    old.put(Previous::filter(0), {0.3f, -1.5f, 0.6f, 10.0f, 1.0f, 3.0f, 1.0f});
    old.put(Previous::filter(1), {0.4f, 1.5f, 0.7f, 9.0f, 2.0f, 2.0f, 0.0f});
    old.put(Previous::routing, {2.0f, -6.0f, 0.9f, -0.1f, 0.8f, 0.2f});
    old.put(Previous::lfo(0), {0.3f, 2.0f, -0.25f, 10.0f, 1.0f, 1.0f, 0.9f});
    old.put(Previous::lfo(1), {0.4f, 4.0f, 0.5f, 7.0f, 0.0f, 0.0f, 0.9f});
    old.put(Previous::envelope, {0.1f, 1.0f, 0.2f, 0.3f, 0.4f, 0.5f});
    old.put(Previous::receiveMidi, {1.0f});
    for (int slot = 0; slot < 3; ++slot)  // both LFOs and the envelope
        old.put(Previous::slot(slot), {static_cast<float>(slot + 1), 0.5f, 0.0f, 0.0f, 27.0f});
    old.put(Previous::autoMute, {1.0f, 0.0f});
    set(dry, 1.0f);
    loadPrevious(old);
    EXPECT_EQ(range(0, 7), (std::vector<float>{1.0f, 0.25f, 2.0f, 0.3f, 0.4f, 0.0f, -0.5f}));
    EXPECT_EQ(range(7, 7), (std::vector<float>{0.0f, -0.5f, 4.0f, 0.6f, 0.7f, 0.0f, 0.8f}));
    EXPECT_EQ(range(14, 4), (std::vector<float>{1.0f, 1.0f, 1.0f, 0.0f}));
    EXPECT_EQ(range(18, 7), (std::vector<float>{0.3f, -1.5f, 0.6f, 10.0f, 1.0f, 3.0f, 1.0f}));
    EXPECT_EQ(range(25, 7), (std::vector<float>{0.4f, 1.5f, 0.7f, 9.0f, 2.0f, 2.0f, 0.0f}));
    EXPECT_EQ(range(32, 7), (std::vector<float>{2.0f, -6.0f, 0.9f, -0.1f, 0.8f, 0.2f, 0.0f}));
    EXPECT_EQ(value(48), 2.0f);
    EXPECT_EQ(range(49, 2), (std::vector<float>{0.3f, -0.25f}));
    EXPECT_EQ(range(54, 2), (std::vector<float>{11.0f, 1.0f}));
    EXPECT_EQ(range(122, 2), (std::vector<float>{0.4f, 0.5f}));
    EXPECT_EQ(range(127, 2), (std::vector<float>{0.0f, 0.0f}));
    EXPECT_EQ(value(487), 1.0f);
    EXPECT_EQ(range(488, 8), (std::vector<float>{0.0f, 0.0f, 0.1f, 2.0f, 0.2f, 0.3f, 0.4f, 0.5f}));
    EXPECT_EQ(value(549), 0.0f);  // used by no slot
    EXPECT_EQ(value(580), 1.0f);
    EXPECT_EQ(value(702), 1.0f);
    EXPECT_EQ(value(dry), 1.0f);

    // Before the update there were 176.
    loadPrevious(old, 176);
    EXPECT_EQ(value(702), 0.0f);
    EXPECT_EQ(value(491), 2.0f);
    EXPECT_EQ(connections().size(), 3u);
}

TEST_F(SordelinPresetLoaderTest, MidiSourcesReachAsFarAsTheyDid)
{
    // Levels of 0.16 by what each source had on a target, and has now.
    struct Row {
        int source;  // of the previous product, from 0
        int target;  // likewise
        double expected;
        const char* connection;
    };
    const Row rows[] = {
        {5, 2, 0.08, "MIDI 1 > Delay 1 Feedback"},           // velocity: all by 1 / 2
        {5, 0, 0.16, "MIDI 1 > Delay 1 Time"},               // and back
        {5, 6, 0.16, "MIDI 1 > Delay 2 Offset"},             // and back
        {5, 5, 0.08 * 5 / 7, "MIDI 1 > Delay 2 Time"},       //
        {3, 16, 0.08, "MIDI 1 > XLFO 1 Freq"},               // pitch bend
        {3, 5, 0.16 * 10 / 7, "MIDI 1 > Delay 2 Time"},      //
        {3, 11, 0.08, "MIDI 1 > Filter 1 Pan"},              //
        {3, 12, 0.08, "MIDI 1 > Filter 1 Peak"},             //
        {3, 13, 0.08, "MIDI 1 > Filter 2 Freq"},             //
        {3, 2, 0.16, "MIDI 1 > Delay 1 Feedback"},           //
        {7, 0, 0.16 * 1.51260507, "MIDI 1 > Delay 1 Time"},  // key tracking
        {7, 16, 0.16 * 5.04201698 / 2, "MIDI 1 > XLFO 1 Freq"},
        {7, 6, 0.16 * 60.50419998 / 25, "MIDI 1 > Delay 2 Offset"},
        {7, 5, 0.16 * 5 / 7, "MIDI 1 > Delay 2 Time"},
        {7, 11, 0.16 * 3.02520919 / 1.5, "MIDI 1 > Filter 1 Pan"},
        {7, 12, 0.16 * 5.04201651 / 2.5, "MIDI 1 > Filter 1 Peak"},
        {7, 13, 0.16 * 5.04201651 / 2.5, "MIDI 1 > Filter 2 Freq"},
        {4, 5, 0.16 * 10 / 7, "MIDI 1 > Delay 2 Time"},  // mod wheel
        {4, 0, 0.16, "MIDI 1 > Delay 1 Time"},
        {6, 5, 0.16, "MIDI 1 > Delay 2 Time"},  // aftertouch
    };
    for (const auto& [source, target, expected, connection] : rows) {
        OldValues old(Previous::count);
        old.put(Previous::slot(0),
                {static_cast<float>(source + 1), 0.5f, 0.0f, 0.0f, static_cast<float>(target + 1)});
        old.put(Previous::slot(7), {1.0f, 0.25f, 0.0f, 0.0f, 28.0f});  // LFO 1 on the first one's level
        loadPrevious(old);
        // The slots are sorted by source. The MIDI sources that none uses have gone.
        EXPECT_EQ(connections(), (Names{"XLFO 1 > Slot 2 Level", connection}));
        EXPECT_EQ(value(48), 1.0f);
        EXPECT_EQ(value(487), 0.0f);
        EXPECT_EQ(value(549), 1.0f);
        EXPECT_NEAR(level(1), expected, 1e-5) << connection;
        EXPECT_NEAR(level(0), 0.05 * expected / 0.16, 1e-5) << connection;
        EXPECT_EQ(plugin.midiSources[0].input.value(),
                  std::vector<MidiModSource::MidiInput>(
                      {MidiModSource::MidiInput::PitchBend, MidiModSource::MidiInput::ModWheel,
                       MidiModSource::MidiInput::Velocity, MidiModSource::MidiInput::Aftertouch,
                       MidiModSource::MidiInput::KeyboardTrack})[static_cast<std::size_t>(source - 3)]);
    }
}

/// What two steps sound like, without the engine: the second step begins at the balance, and a step glides
/// over the last `glide` of its length.
double shapeAt(const XLFOParameterSet& xlfo, double phase)
{
    const double balance = xlfo.balance.currentValue();
    phase = std::fmod(phase + xlfo.phaseOffset.currentValue(), 1.0);
    const int step = phase < balance ? 0 : 1;
    const double t = step == 0 ? phase / balance : (phase - balance) / (1.0 - balance);
    const double from = xlfo.steps[step].value.currentValue();
    const double to = xlfo.steps[1 - step].value.currentValue();
    const double glide = xlfo.steps[step].glide.currentValue();
    if (t <= 1.0 - glide)
        return from;
    const double x = (t - (1.0 - glide)) / glide;
    const bool sine = xlfo.steps[step].glideCurve.value() == XLFO::GlideCurve::Sine;
    return from + (to - from) * (sine ? 0.5 - 0.5 * std::cos(std::numbers::pi * x) : x);
}

TEST_F(SordelinPresetLoaderTest, OldWavesKeepTheirShape)
{
    using Shape = double (*)(double);
    const Shape sine = [](double t) { return std::sin(2.0 * std::numbers::pi * t); };
    const Shape triangle = [](double t) { return t < 0.25 ? 4 * t : t < 0.75 ? 2 - 4 * t : 4 * t - 4; };
    const Shape sawtooth = [](double t) { return 2 * t - 1; };
    const Shape square = [](double t) { return t < 0.5 ? 1.0 : -1.0; };
    struct Row {
        float wave;
        Shape shape;
    };
    for (const auto& [wave, shape] :
         {Row{1.0f, sine}, Row{2.0f, triangle}, Row{3.0f, sawtooth}, Row{4.0f, square}, Row{0.0f, sine},
          Row{1e30f, square}, Row{NAN, sine}}) {
        OldValues old(First::count);
        old.put(First::lfo(0), {0.5f, wave, 0.0f, NAN, 1.0f, 0.0f});
        old.put(First::slot(0), {1.0f, 0.5f, 0.0f, 0.0f, 1.0f});
        loadFirst(old);
        EXPECT_EQ(plugin.xlfos[0].steps.numActive.value(), 2);
        EXPECT_EQ(plugin.xlfos[0].syncMode.value(), XLFOFreqController::SyncMode::Notes16);
        for (double t = 0.005; t < 1.0; t += 0.01)
            ASSERT_NEAR(shapeAt(plugin.xlfos[0], t), shape(t), 1e-4) << wave << " at " << t;
    }
}

TEST_F(SordelinPresetLoaderTest, VersionsThreeAndFourHadOtherDepths)
{
    for (const int version : {3, 4}) {
        std::vector<float> values = defaults();
        const auto slot = [&values](int number, float source, float knob, float target) {
            const std::size_t first = static_cast<std::size_t>(582 + 5 * number);
            values[first] = source + 1;
            values[first + 1] = knob;
            values[first + 4] = target + 1;
        };
        values[0] = 0.5f;
        values[freeze] = 1.0f;
        values[581] = 9.0f;
        values[56] = 1.0f;      // XLFO 1 snaps
        slot(0, 20, 0.5f, 2);   // EF 1 on both feedbacks
        slot(1, 23, 0.5f, 7);   // EF 4
        slot(2, 20, 0.5f, 3);   // and on a cross feedback
        slot(3, 8, 0.25f, 10);  // XLFO 1 on both filters
        slot(4, 8, 0.25f, 13);  //
        slot(5, 9, 0.25f, 10);  // XLFO 2, which doesn't snap
        slot(6, 8, 0.25f, 12);  // XLFO 1 on a peak
        slot(7, 8, 0.5f, 83);   // and on the level of the first
        slot(8, 14, 0.5f, 2);   // EG 1 on a feedback
        if (version == 3)
            values.erase(values.begin() + freeze);
        const std::string bytes = presetBytes("MStd", version, values);
        ASSERT_EQ(bytes.size(), version == 3 ? 2828u : 2832u);
        ASSERT_TRUE(load(bytes).succeeded());
        // The curve takes 0.5 to 0.16 and 0.25 to 0.05; 0.05 * 4.2 is 0.21.
        const double levels[] = {0.08, 0.08, 0.16, 0.21, 0.21, 0.05, 0.05, 0.08, 0.16};
        for (int i = 0; i < 9; ++i)
            EXPECT_NEAR(level(i), levels[i], 1e-6) << i;
        EXPECT_NEAR(value(0), version == 3 ? 0.498089f : 0.5f, 1e-6f);
        EXPECT_EQ(value(freeze), 0.0f);
        EXPECT_EQ(value(581), 9.0f);
    }
}

TEST_F(SordelinPresetLoaderTest, OldFilesMayBeOfAnyLengthAndHoldAnything)
{
    std::mt19937 random(7);
    for (const int version : {1, 2, 3, 4})
        for (int round = 0; round < 60; ++round) {
            std::vector<float> values;
            for (std::size_t count = random() % 720; count > 0; --count) {
                const auto bits = static_cast<std::uint32_t>(random());
                values.push_back(round % 2 ? std::bit_cast<float>(bits) : static_cast<float>(bits % 60));
            }
            const std::string signature = version == 1 ? "MDly" : version == 2 ? "MSlg" : "MStd";
            ASSERT_TRUE(load(presetBytes(signature, version, values)).succeeded());
            for (int i = 0; i < plugin.parameterCount(); ++i) {
                ASSERT_GE(value(i), plugin.parameter(i).minimumValue());
                ASSERT_LE(value(i), plugin.parameter(i).maximumValue());
            }
        }
}

}  // namespace
