#include "parameters/Abbreviation.h"

#include <gtest/gtest.h>

namespace {

TEST(Abbreviation, GetsRougherAsTheRoomShrinks)
{
    struct Row {
        const char* text;
        std::size_t maxChars;
        const char* shortText;
    };
    const Row rows[] = {
        {"Filter 1 Frequency", 0, "Filter 1 Frequency"},
        {"Filter 1 Frequency", 18, "Filter 1 Frequency"},
        {"Filter 1 Frequency", 15, "Fil 1 Frequency"},  // words one after the other
        {"Filter 1 Frequency", 10, "Fil 1 Freq"},
        {"Filter 1 Frequency", 9, "Fil1 Freq"},
        {"Filter 1 Frequency", 8, "Fil1Freq"},
        {"Filter 1 Frequency", 7, "F1 Freq"},
        {"Filter 1 Frequency", 6, "F1Freq"},
        {"High Pass Filter", 10, "HP Filter"},
        {"Low Shelf", 3, "LS"},
        {"Normal Input Side Chain", 17, "Normal Input SC"},
        {"Band 1 Gain", 7, "B1 Gain"},
        {"Morvelane Prime", 6, "MPrime"},    // initials of all words but the last
        {"Morvelane Prime", 4, "MPrm"},      // and that one without vowels
        {"Mid 2Side Level", 8, "M2SLevel"},  // digits and capitals go with an initial
        {"Mid 2Side Level", 7, "2SLevel"},   // before a digit it can be spared
        {"Slope 9", 6, "Slope9"},
    };
    for (const auto& [text, maxChars, shortText] : rows)
        EXPECT_EQ(abbreviate(text, maxChars), shortText) << text << " in " << maxChars;
}

TEST(Abbreviation, AlwaysFits)
{
    for (std::size_t maxChars = 1; maxChars < 30; ++maxChars)
        for (const char* text : {"XLFO 1 Step 16 Glide function", "Num Active MIDI Sources",
                                 "uuu (aeiou) yyy", "12 34 56", "Auto Mute Self-Osc", "   ", "1/64"})
            EXPECT_LE(abbreviate(text, maxChars).size(), maxChars) << text;
}

TEST(Abbreviation, ComparisonIgnoresTheCaseOfLettersOnly)
{
    EXPECT_EQ(compareIgnoringCase("kHz", "KHZ"), 0);
    EXPECT_EQ(compareIgnoringCase("", ""), 0);
    EXPECT_LT(compareIgnoringCase("s", "sec"), 0);
    EXPECT_GT(compareIgnoringCase("sec", "S"), 0);
    EXPECT_LT(compareIgnoringCase("alpha", "Beta"), 0);
    EXPECT_LT(compareIgnoringCase("z", "\xc3\xa4"),
              0);  // bytes of other letters stand behind, as unsigned numbers
    EXPECT_NE(compareIgnoringCase("[", "{"), 0);
}

}  // namespace
