#include "platform/TextLines.h"

#include "platform/TextDirection.h"

#include <gtest/gtest.h>

namespace gui {

namespace {

using Lines = std::vector<std::string>;

/// Fits what has up to `count` bytes; "…" has three.
FitsLine upTo(std::size_t count)
{
    return [count](std::string_view text) { return text.size() <= count; };
}

/// The characters in the order in which they are shown.
std::u32string Shown(std::u32string_view text)
{
    std::u32string shown;
    for (const DirectedRun& run : VisualRuns(text)) {
        const std::u32string part(text.substr(run.start, run.length));
        shown += run.rightToLeft ? std::u32string(part.rbegin(), part.rend()) : part;
    }
    return shown;
}

}  // namespace

TEST(TextLines, AreShownInTheDirectionOfTheirLetters)
{
    // Hebrew: alef, bet, gimel; Arabic-Indic figures one, two.
    struct Row {
        std::u32string_view text, shown;
    };
    for (const Row& row :
         {Row{U"", U""}, Row{U"abc, 1.5", U"abc, 1.5"}, Row{U"\u05D0\u05D1", U"\u05D1\u05D0"},
          Row{U"ab \u05D0\u05D1 cd", U"ab \u05D1\u05D0 cd"},
          Row{U"ab \u05D0\u05D1 ", U"ab \u05D1\u05D0 "},  // the blank stays behind what it follows
          Row{U"ab \u05D0 \u05D1!", U"ab \u05D1 \u05D0!"}, Row{U"\u05D0\u05D1 ", U" \u05D1\u05D0"},
          Row{U"\u05D0 cd \u05D1", U"\u05D1 cd \u05D0"},
          Row{U"\u05D0 -12.5 %, \u05D1", U"\u05D1 ,% 12.5- \u05D0"},
          Row{U"\u05D0 12.5% \u05D1", U"\u05D1 12.5% \u05D0"},
          Row{U"\u05D0\u05D1 (12)", U")12( \u05D1\u05D0"},  // each bracket is mirrored as it is drawn
          Row{U"ab \u05D0 12 cd", U"ab 12 \u05D0 cd"}, Row{U"ab 12 \u05D0", U"ab 12 \u05D0"},
          Row{U"\u05D0\u0661\u0662", U"\u0661\u0662\u05D0"},
          Row{U"\u05D0\u05B8\u05D1", U"\u05D1\u05B8\u05D0"},  // a vowel goes with its letter
          Row{U"\u200F(a)", U")a(\u200F"}})
        EXPECT_TRUE(Shown(row.text) == row.shown) << "row " << row.text.size();
}

TEST(TextLines, AreCutWithAnEllipsisBetweenCharacters)
{
    struct Row {
        const char* text;
        std::size_t count;
        const char* cut;
    };
    for (const auto& [text, count, cut] :
         {Row{"Level", 5, "Level"}, Row{"Levels", 5, "Le…"}, Row{"A bc de", 6, "A b…"},
          Row{"A bcde", 5, "A…"}, Row{"éé éé", 6, "é…"}, Row{"Level", 2, "…"}, Row{"", 0, ""},
          Row{"\xff\xfe\xff\xff\xff", 4, "\xff…"}})
        EXPECT_EQ(CutWithEllipsis(text, upTo(count)), cut) << text;
}

TEST(TextLines, AreWrappedBetweenWords)
{
    struct Row {
        const char* text;
        std::size_t count;
        Lines lines;
    };
    for (const Row& row :
         {Row{"one two three", 7, {"one two", "three"}}, Row{"one two three", 3, {"one", "two", "thr", "ee"}},
          Row{"one  two", 5, {"one", "two"}}, Row{"a\n\nb c", 9, {"a", "", "b c"}},
          Row{"abcdefgh ij", 4, {"abcd", "efgh", "ij"}}, Row{"x abcdefgh", 4, {"x", "abcd", "efgh"}},
          Row{"éé", 1, {"é", "é"}}, Row{"ends ", 4, {"ends"}}, Row{"", 4, {""}},
          Row{"end\n", 4, {"end", ""}}})
        EXPECT_EQ(WrapWords(row.text, upTo(row.count)), row.lines) << row.text;
}

}  // namespace gui
