#include "clap_host/NumberText.h"

#include "render/Summary.h"

#include <gtest/gtest.h>

TEST(NumberText, ReadsWholeTextsOnly)
{
    struct Row {
        const char* text;
        std::optional<double> number;
    };
    for (const auto& [text, number] : {
             Row{"2.5", 2.5},
             Row{" -3\t", -3.0},
             Row{"+1e3", 1000.0},
             Row{"", {}},
             Row{" ", {}},
             Row{"2,5", {}},
             Row{"3 ms", {}},
             Row{"+-3", {}},
             Row{"inf", {}},
             Row{"nan", {}},
             Row{"1e999", {}},
             Row{"0x10", {}},
         })
        EXPECT_EQ(parseNumber(text), number) << '"' << text << '"';
}

TEST(NumberText, NeverWritesANegativeZero)
{
    EXPECT_EQ(fixedText(-0.04, 1), "0.0");
    EXPECT_EQ(fixedText(-0.06, 1), "-0.1");
    EXPECT_EQ(fixedText(-0.0, 0), "0");
    EXPECT_EQ(fixedText(1e15, 0), "1000000000000000");
}

TEST(NumberText, DurationsRoundToHundredthsAcrossTheMinute)
{
    EXPECT_EQ(durationText(0.0), "0:00.00");
    EXPECT_EQ(durationText(9.972), "0:09.97");
    EXPECT_EQ(durationText(59.996), "1:00.00");
    EXPECT_EQ(durationText(3661.5), "61:01.50");
}
