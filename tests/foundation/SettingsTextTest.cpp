#include "foundation/SettingsText.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

using Bytes = std::vector<std::uint8_t>;

}  // namespace

TEST(SettingsText, ReadsItsThreeTypesAndPassesOverOthers)
{
    const auto values = parseSettings("# ours\n"
                                      "number = -20000 # a comment\n"
                                      "hex = 0xFF\n"
                                      "big = 9223372036854775807\n"
                                      "small = -9223372036854775808\n"
                                      "text = \"\xC3\xBC\\t\\\"\"\n"
                                      "literal = 'C:\\x'\n"
                                      "cut = \"abc\\u0000def\"\n"
                                      "bytes = [0, 0x10,\n 255]\n"
                                      "none = []\n"
                                      "truth = true\n"
                                      "real = 1.0\n"
                                      "day = 2020-01-01\n"
                                      "outside = [256]\n"
                                      "negative = [-1]\n"
                                      "mixed = [1, 'a']\n"
                                      "inline = { a = 1 }\n"
                                      "dotted.a = 1\n"
                                      "\"odd name\" = 3\n"
                                      "[table]\n"
                                      "inner = 1\n");
    ASSERT_TRUE(values);
    const SettingValues expected{
        {"number", -20000},       {"hex", 255},         {"big", INT32_MAX}, {"small", INT32_MIN},
        {"text", "\xC3\xBC\t\""}, {"literal", "C:\\x"}, {"cut", "abc"},     {"bytes", Bytes{0, 16, 255}},
        {"none", Bytes{}},        {"odd name", 3}};
    EXPECT_EQ(*values, expected);
}

TEST(SettingsText, IsNoneWhereTheTextIsDamaged)
{
    for (const char* text : {"a = 1\na = 2\n", "a", "a = \"x", "= 1", "a = \"\xFF\"", "a = 1 b = 2",
                             "a = 99999999999999999999", "\x01"})
        EXPECT_FALSE(parseSettings(text)) << text;
    EXPECT_EQ(parseSettings("")->size(), 0u);
}

TEST(SettingsText, ChangesValuesInTheirPlace)
{
    struct Row {
        const char* before;
        SettingValues changes;
        const char* after;
    };
    for (const auto& [before, changes, after] : {
             Row{"", {{"B", 2}, {"A", "x"}}, "A = \"x\"\nB = 2\n"},
             Row{"A = 1 # mine\n# end\n", {{"A", 23}}, "A = 23 # mine\n# end\n"},
             Row{"A = 1 # mine\n", {{"A", 1}}, "A = 1 # mine\n"},  // not even another notation
             Row{"A = 0x10\n", {{"A", 16}}, "A = 0x10\n"},
             // A character of several bytes before the value.
             Row{"\"\xC3\xBC\" = \"\xE2\x99\xAA\" # \xC3\xBC\n",
                 {{"\xC3\xBC", 5}},
                 "\"\xC3\xBC\" = 5 # \xC3\xBC\n"},
             Row{"A = '''x\ny''' # tail\nB = [1,\n 2] # two\n",
                 {{"A", 1}, {"B", Bytes{7, 8}}},
                 "A = 1 # tail\nB = [7, 8] # two\n"},
             Row{"A = true\n", {{"A", 1}}, "A = 1\n"},  // another type
             // New ones stand before the tables, and behind what is there.
             Row{"# head\nA = 1\nB = 2 # two\n\n[user]\nA = 5\n",
                 {{"C", 3}, {"A", 9}},
                 "# head\nA = 9\nB = 2 # two\nC = 3\n\n[user]\nA = 5\n"},
             Row{"A = 1", {{"B", 2}}, "A = 1\nB = 2\n"},
             Row{"# head\n[user]\nA = 5\n", {{"A", 1}}, "A = 1\n# head\n[user]\nA = 5\n"},
             Row{"[[list]]\nA = 5\n", {{"A", 1}}, "A = 1\n[[list]]\nA = 5\n"},
             Row{"A = 1\r\nB = 2\r\n", {{"A", 3}}, "A = 3\r\nB = 2\r\n"},
             Row{"\xEF\xBB\xBF"
                 "A = 1\n",
                 {{"A", 3}},
                 "\xEF\xBB\xBF"
                 "A = 3\n"},
             Row{"\xEF\xBB\xBF[t]\n",
                 {{"A", 3}},
                 "\xEF\xBB\xBF"
                 "A = 3\n[t]\n"},
             Row{"", {{"odd name", 1}}, "\"odd name\" = 1\n"},
             Row{"", {{"A", "C:\\x\n\"\x7F"}}, "A = \"C:\\\\x\\u000A\\\"\\u007F\"\n"},
             Row{"", {{"A", std::string("ab\0cd", 5)}}, "A = \"ab\"\n"},
             Row{"B = 1\n", {{"A", "\xFF"}, {"B", 2}}, "B = 2\n"},  // no UTF-8: left out
         }) {
        EXPECT_EQ(changeSettings(before, changes), after);
        EXPECT_TRUE(parseSettings(after));
    }
}

TEST(SettingsText, KeepsEveryValueWhereItHasToRewrite)
{
    // A name that is a table of the user's, in each of the three notations.
    for (const char* before :
         {"[A]\nx = 1\n[B]\ny = 2.5\n", "A.x = 1\nB.y = 2.5\n", "A = {x = 1}\nB = {y = 2.5}\n"}) {
        const std::string after = changeSettings(before, {{"A", 7}, {"C", "c"}});
        const auto values = parseSettings(after);
        ASSERT_TRUE(values) << after;
        EXPECT_EQ(*values, (SettingValues{{"A", 7}, {"C", "c"}})) << after;
        EXPECT_NE(after.find("2.5"), std::string::npos) << after;
    }
}

TEST(SettingsText, TakesEveryByteAndEveryLongValueBothWays)
{
    std::string letters;
    Bytes bytes;
    for (int code = 1; code < 128; ++code)
        letters += static_cast<char>(code);
    for (int code = 0; code < 256; ++code)
        bytes.push_back(static_cast<std::uint8_t>(code));
    const SettingValues values{{"Letters", letters}, {"Bytes", bytes}, {"Most", INT32_MAX},
                               {"Least", INT32_MIN}, {"Empty", ""},    {"Long", std::string(10000, 'x')}};
    EXPECT_EQ(parseSettings(changeSettings("", values)), values);
}
