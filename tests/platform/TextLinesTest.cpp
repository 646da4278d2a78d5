#include "platform/TextLines.h"

#include <gtest/gtest.h>

namespace gui {

namespace {

using Lines = std::vector<std::string>;

/// Fits what has up to `count` bytes; "…" has three.
FitsLine upTo(std::size_t count)
{
    return [count](std::string_view text) { return text.size() <= count; };
}

}  // namespace

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
