#include "pack/ShownText.h"

#include <gtest/gtest.h>

TEST(ShownText, AllowsRoundingAndOtherUnitsButNoOtherValue)
{
    struct Row {
        const char* written;
        const char* shown;
        bool same;
    };
    for (const auto& [written, shown, same] :
         {Row{"Tube", "Tube", true}, Row{"Tube", "Metal", false}, Row{"tube", "Tube", false},
          Row{"0.6667", "0.667", true}, Row{"1.5", "1.000", false}, Row{"350 ms", "350.0 ms", true},
          Row{"6000 ms", "5000 ms", false}, Row{"1500 ms", "1.500 sec", true},
          Row{"2 kHz", "2000.0 Hz", true}, Row{"+3 dB", "3.00 dB", true}, Row{"-3 dB", "-3.01 dB", true},
          Row{"-INF dB", "-INF dB", true}, Row{"-40 dB", "-INF dB", false}, Row{"5", "5.000 sec", false},
          Row{"16", "8", false}, Row{"1/16", "1/16", true}, Row{"1/16", "1/8", false}, Row{"", "", true}})
        EXPECT_EQ(showsWhatWasWritten(written, shown), same) << written << " / " << shown;
}
