#include "clap_host/NearestNames.h"

#include <gtest/gtest.h>

TEST(NearestNames, PutsTheLikeliestFirst)
{
    const std::vector<std::string> names{"Delay 1 Time", "Delay 2 Time", "Dry Level", "Wet Level",
                                         "Channel Mode"};
    struct Row {
        const char* wanted;
        std::vector<std::string> expected;
    };
    for (const auto& [wanted, expected] : {
             // One letter exchanged, then two.
             Row{"Delay 1 Tine", {"Delay 1 Time", "Delay 2 Time"}},
             Row{"delay 2 tme", {"Delay 2 Time", "Delay 1 Time"}},
             // Held whole by both, in their own order.
             Row{"LEVEL", {"Dry Level", "Wet Level"}},
             Row{"wett level", {"Wet Level", "Dry Level"}},
             Row{"zzz", {}},
             Row{"", {}},
         })
        EXPECT_EQ(nearestNames(wanted, names, 2), expected) << wanted;
}

TEST(NearestNames, GivesNoMoreThanAsked)
{
    EXPECT_EQ(nearestNames("level", {"Dry Level", "Wet Level", "Input Level"}, 2).size(), 2u);
}
