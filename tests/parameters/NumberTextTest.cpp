#include "parameters/NumberText.h"

#include "parameters/FloatPluginParameter.h"
#include "parameters/TimeParameterUnits.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <locale>

namespace {

const double infinity = HUGE_VAL;

TEST(NumberText, FormatsAreThoseOfPrintfPlusSignificantDigits)
{
    struct Row {
        double value;
        const char* format;
        const char* text;
    };
    const Row rows[] = {
        {1.5, "%.3f", "1.500"},
        {-1.5, "%.3f", "-1.500"},
        {2.0 / 3.0, "%.1f", "0.7"},
        {3.0, "%+.2f", "+3.00"},
        {-3.0, "%+.2f", "-3.00"},
        {12.0, "%d", "12"},
        {-3.0, "%d", "-3"},
        {350.0, "*3f", "350.0"},
        {1.5, "*3f", "1.500"},
        {12345.0, "*3f", "12345"},
        {-42.0, "*3f", "-42.00"},
        // 9.9996 has four digits as 10.00, not as 10.000: a rounding up costs a decimal.
        {9.9994, "*3f", "9.999"},
        {9.9996, "*3f", "10.00"},
        {99.996, "*3f", "100.0"},
        {99.6, "*2f", "99.6"},
        {99.96, "*2f", "100"},
        {7.0, "*+2f", "+7.00"},
    };
    for (const auto& [value, format, text] : rows)
        EXPECT_EQ(formatNumber(value, format), text) << value << " as " << format;
}

TEST(NumberText, ZerosHaveNoSignAndInfinitiesHaveNames)
{
    EXPECT_EQ(formatNumber(-0.001, "%.2f"), "0.00");
    EXPECT_EQ(formatNumber(0.001, "%+.2f"), "0.00");
    EXPECT_EQ(formatNumber(-0.0, "*3f"), "0.000");
    EXPECT_EQ(formatNumber(infinity, "%.2f"), "INF");
    EXPECT_EQ(formatNumber(-infinity, "%+.2f"), "-INF");
}

TEST(NumberText, FrequenciesKeepFiveDigits)
{
    struct Row {
        float hz;
        const char* text;
    };
    for (const auto& [hz, text] :
         {Row{1.0f, "1.000"}, Row{99.999f, "99.999"}, Row{99.9997f, "100.00"}, Row{440.0f, "440.00"},
          Row{999.996f, "1000.0"}, Row{9999.9f, "9999.9"}, Row{10000.0f, "10000"}, Row{75616.2f, "75616"}})
        EXPECT_EQ(frequencyText(hz), text);
}

TEST(NumberText, TimesTurnIntoSecondsWhereTheMillisecondsWouldReadOneThousand)
{
    struct Row {
        float ms;
        const char* text;
    };
    for (const auto& [ms, text] :
         {Row{0.0f, "0.000 ms"}, Row{5.0f, "5.000 ms"}, Row{350.0f, "350.0 ms"}, Row{999.9f, "999.9 ms"},
          Row{999.96f, "1.000 sec"}, Row{1000.0f, "1.000 sec"}, Row{12345.0f, "12.35 sec"}})
        EXPECT_EQ(timeText(ms), text);
}

TEST(NumberText, DecibelsHaveASignAndEndAtMinusInf)
{
    struct Row {
        float db;
        const char* text;
    };
    for (const auto& [db, text] : {Row{0.0f, "0.00"}, Row{6.0206f, "+6.02"}, Row{-24.0f, "-24.00"},
                                   Row{-179.9f, "-179.90"}, Row{-179.95f, "-INF"}, Row{-180.0f, "-INF"}})
        EXPECT_EQ(dbText(db), text);
}

TEST(NumberText, NumbersAreReadFromTheFrontOfAText)
{
    struct Row {
        const char* text;
        double value;
        const char* rest;
    };
    for (const auto& [text, value, rest] :
         {Row{"1.5 ms", 1.5, " ms"}, Row{"  +2dB", 2.0, "dB"}, Row{"-.5", -0.5, ""},
          Row{"1e3Hz", 1000.0, "Hz"}, Row{"-INF dB", -infinity, " dB"}, Row{"inf", infinity, ""},
          Row{"1.234.5", 1.234, ".5"}}) {
        const auto number = readNumber(text);
        ASSERT_TRUE(number) << text;
        EXPECT_EQ(number->value, value) << text;
        EXPECT_EQ(number->rest, rest) << text;
    }
    for (const char* text : {"", " ", "dB", "nan", "+-1", "- 1", "1e999"})
        EXPECT_FALSE(readNumber(text)) << text;
}

/// Decimal commas and grouped thousands, as many languages write them.
struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Sets a language with decimal commas: for C++ always, for C where the system has one.
class CommaLocale {
public:
    CommaLocale() : before(std::locale::global(std::locale(std::locale::classic(), new CommaNumbers)))
    {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
            if (std::setlocale(LC_NUMERIC, name))
                break;
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale()
    {
        std::locale::global(before);
        std::setlocale(LC_NUMERIC, "C");
    }

private:
    std::locale before;
};

TEST(NumberText, TheHostsLocaleChangesNothing)
{
    const CommaLocale locale;
    EXPECT_EQ(formatNumber(12345.678, "%.3f"), "12345.678");
    EXPECT_EQ(timeText(1500.0f), "1.500 sec");
    EXPECT_EQ(readNumber("2.5")->value, 2.5);

    FloatPluginParameter time(nullptr, "Time");
    time.setSignalRange(5.0f, 5000.0f);
    time.setUnit(msUnit);
    EXPECT_EQ(time.valueText(1.0f), "5.000 sec");
    EXPECT_NEAR(*time.parseText("2.5 sec"), 2495.0f / 4995.0f, 1e-6f);
    EXPECT_NEAR(*time.parseText("2,5 sec"), 2495.0f / 4995.0f, 1e-6f);
}

}  // namespace
