#include "dsp/Conversions.h"
#include "parameters/DBParameterUnits.h"
#include "parameters/FloatPluginParameter.h"
#include "parameters/FrequencyParameterUnits.h"
#include "parameters/PlainParameterUnits.h"
#include "parameters/TimeParameterUnits.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// A parameter whose values are its display values, so that a test reads as what was typed and what it means.
struct Typed {
    Typed(const FloatPluginParameterUnit& unit, float lowest, float highest)
    {
        parameter.setRange(lowest, highest, lowest);
        parameter.setUnit(unit);
        parameter.format.shown = identityCurve;
    }
    FloatPluginParameter parameter{nullptr, "Typed"};
};

struct Meaning {
    const char* text;
    double value;
};

void expectMeanings(const FloatPluginParameter& parameter, std::initializer_list<Meaning> meanings)
{
    for (const auto& [text, value] : meanings) {
        const auto parsed = parameter.parseText(text);
        ASSERT_TRUE(parsed) << text;
        EXPECT_NEAR(*parsed, value, std::fabs(value) * 2e-6 + 1e-9) << text;
    }
}

void expectUnreadable(const FloatPluginParameter& parameter, std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        EXPECT_FALSE(parameter.parseText(text)) << text;
}

TEST(ParameterUnits, MillisecondsTakeSecondsAndGuessBareNumbers)
{
    Typed time(msUnit, 5.0f, 5000.0f);
    expectMeanings(time.parameter, {{"350.0 ms", 350.0},
                                    {"350ms", 350.0},
                                    {"2 sec", 2000.0},
                                    {"2 S", 2000.0},
                                    {"2,5 s", 2500.0},
                                    {"350", 350.0},
                                    {"1.5", 1500.0},  // below the range: seconds are meant
                                    {"50%", 2502.5},
                                    {"50 %", 2502.5},
                                    {"200 %", 5000.0},
                                    {"9 sec", 5000.0},
                                    {"-1 ms", 5.0},
                                    {"inf", 5000.0},
                                    {" 7 ms and more", 7.0}});
    expectUnreadable(time.parameter, {"", "ms", "5 dB", "five", "5..6", "A4", "nan"});

    time.parameter.setValue(3000.0f, announceChange);
    expectMeanings(time.parameter, {{"2", 2000.0},  // the present value is in seconds
                                    {"7", 7.0}});   // but 7 s lies beyond the range
}

TEST(ParameterUnits, SecondsTakeMillisecondsAndGuessBareNumbers)
{
    Typed time(secUnit, 0.05f, 5.0f);
    expectMeanings(time.parameter, {{"2.000 sec", 2.0},
                                    {"250 ms", 0.25},
                                    {"250", 0.25},  // above the range: milliseconds are meant
                                    {"4", 4.0}});   // 4 ms would lie below it
    Typed fromZero(secUnit, 0.0f, 5.0f);
    expectMeanings(fromZero.parameter, {{"4", 0.004}});  // the present value, 0 s, is in milliseconds
    fromZero.parameter.setValue(2.0f, announceChange);
    expectMeanings(fromZero.parameter, {{"4", 4.0}});
}

TEST(ParameterUnits, FrequenciesTakeKilohertzAndNotes)
{
    Typed frequency(hzUnit, 20.0f, 20000.0f);
    // A note n semitones from A4 has 440 Hz times 2^(n / 12).
    expectMeanings(frequency.parameter, {{"1.000 Hz", 20.0},
                                         {"440.00 hz", 440.0},
                                         {"2 kHz", 2000.0},
                                         {"2.5k", 2500.0},
                                         {"A4", 440.0},
                                         {"a", 440.0},
                                         {" A5 ", 880.0},
                                         {"C#3", 440.0 * std::exp2(-20.0 / 12.0)},
                                         {"Db3", 440.0 * std::exp2(-20.0 / 12.0)},
                                         {"BB2", 440.0 * std::exp2(-23.0 / 12.0)},
                                         {"B", 440.0 * std::exp2(2.0 / 12.0)},
                                         {"A4+50", 440.0 * std::exp2(0.5 / 12.0)},
                                         {"A4-50,5", 440.0 * std::exp2(-0.505 / 12.0)}});
    expectUnreadable(frequency.parameter, {"H4", "bass", "A#x", "440 ms", "#4"});
}

TEST(ParameterUnits, LogarithmicFrequenciesShowHz)
{
    FloatPluginParameter cutoff(nullptr, "Cutoff");
    cutoff.setSignalRange(4.0f, 14.0f);  // 16 Hz to 16384 Hz
    cutoff.setUnit(expFreqUnit);
    EXPECT_EQ(cutoff.valueText(0.0f), "16.000 Hz");
    EXPECT_EQ(cutoff.valueText(0.5f), "512.00 Hz");
    EXPECT_EQ(cutoff.valueText(1.0f), "16384 Hz");
    EXPECT_NEAR(*cutoff.parseText("1.024 kHz"), 0.6f, 1e-6f);
    EXPECT_NEAR(*cutoff.parseText("A4"), (std::log2(440.0f) - 4.0f) / 10.0f, 1e-6f);

    cutoff.setSignalRange(-5.643856f, 4.356144f);
    cutoff.setUnit(expFreqWithZeroUnit);
    EXPECT_EQ(cutoff.valueText(0.0f), "0.000 Hz");
    EXPECT_NEAR(*cutoff.parseText("0.125 Hz"), 0.2643856f,
                1e-6f);  // where the straight part ends, at log2 -3
}

TEST(ParameterUnits, DecibelsTakeGains)
{
    Typed level(dbUnit, -180.0f, 36.0f);
    expectMeanings(level.parameter, {{"+6.00 dB", 6.0},
                                     {"-3", -3.0},
                                     {"0.5 x", 20.0 * std::log10(0.5)},
                                     {"0.5 X", 20.0 * std::log10(0.5)},
                                     {"2*", 20.0 * std::log10(2.0)},
                                     {"-INF dB", -180.0},
                                     {"-inf", -180.0},
                                     {"0 x", -180.0}});
    EXPECT_EQ(level.parameter.valueText(-180.0f), "-INF dB");
    EXPECT_EQ(level.parameter.valueText(6.0f), "+6.00 dB");

    Typed peak(dbTruePeakUnit, -20.0f, 0.0f);
    EXPECT_EQ(peak.parameter.valueText(-1.0f), "-1.00 dBTP");
    Typed range(dbRangeUnit, 0.0f, 20.0f);
    EXPECT_EQ(range.parameter.valueText(12.0f), "12.00 dB");
}

TEST(ParameterUnits, RangesWithoutPositiveValuesDoWithoutTheSign)
{
    Typed threshold(dbUnit, -80.0f, -1.0f);
    expectMeanings(threshold.parameter, {{"12", -12.0}, {"-12 dB", -12.0}, {"100", -80.0}, {"0", -1.0}});
    Typed attenuation(dbUnit, -80.0f, 0.0f);
    expectMeanings(attenuation.parameter, {{"12", -12.0}});
}

TEST(ParameterUnits, TheOthersDifferByWordsAndFormats)
{
    Typed percent(percentUnit, 0.0f, 200.0f);
    EXPECT_EQ(percent.parameter.valueText(50.0f), "50.0%");
    expectMeanings(percent.parameter,
                   {{"50%", 50.0}, {"50", 50.0}});  // its own unit, not a part of the range
    Typed ratio(ratioUnit, 1.0f, 20.0f);
    EXPECT_EQ(ratio.parameter.valueText(4.0f), "4.00:1");
    expectMeanings(ratio.parameter, {{"4:1", 4.0}});
    Typed slope(slopeUnit, 0.0f, 48.0f);
    EXPECT_EQ(slope.parameter.valueText(12.0f), "12.0 dB/oct");
    expectMeanings(slope.parameter, {{"12 db/OCT", 12.0}});

    FloatPluginParameter pitch(nullptr, "Pitch");
    pitch.setRange(-2.0f, 2.0f, 0.0f);  // octaves
    pitch.setUnit(octavesUnit);
    EXPECT_EQ(pitch.valueText(1.0f), "12.000 semitones");
    expectMeanings(pitch,
                   {{"7 semitones", 7.0 / 12.0}, {"1 octave", 1.0}, {"-50 cents", -0.5 / 12.0}, {"3", 0.25}});
}

TEST(ParameterUnits, WithoutAUnitOnlyTheLabelMayFollow)
{
    FloatPluginParameter plain(nullptr, "Plain");
    plain.format.label = "beats";
    plain.format.prefix = "~";
    EXPECT_EQ(plain.valueText(0.25f), "0.250 beats");
    expectMeanings(plain, {{"0.5", 0.5}, {"0,5 BEATS", 0.5}, {"~ 0.5", 0.5}});
    expectUnreadable(plain, {"0.5 bars", "A4"});
}

}  // namespace
