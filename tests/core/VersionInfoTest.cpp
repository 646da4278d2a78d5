#include "core/VersionInfo.h"

#include <gtest/gtest.h>

TEST(VersionInfo, ReadsOneCharacterEachForMinorAndPatch)
{
    struct Row {
        const char* text;
        const char* shown;
    };
    for (const auto& [text, shown] :
         {Row{"2.41", "2.41"}, Row{"12.305", "12.30"}, Row{"7", "7.00"}, Row{"3.4", "3.00"},
          Row{"0.41", "1.00"}, Row{"", "1.00"}, Row{"x.12", "1.00"}, Row{"2.x1", "1.00"}})
        EXPECT_EQ(VersionInfo::fromText(text).toText(), shown) << text;
}
