#include "foundation/TextCompare.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    std::string_view a;
    std::string_view b;
    int order;
};

/// Both ways round, as an order has to be.
void expectOrder(int (*compare)(std::string_view, std::string_view) noexcept, const Row& row)
{
    EXPECT_EQ(compare(row.a, row.b), row.order) << row.a << " / " << row.b;
    EXPECT_EQ(compare(row.b, row.a), -row.order) << row.b << " / " << row.a;
}

}  // namespace

TEST(TextCompare, OrdersByBytesWithoutCase)
{
    for (const Row& row : {Row{"", "", 0}, Row{"", "a", -1}, Row{"abc", "ABCD", -1}, Row{"aBc", "AbC", 0},
                           Row{"a", "B", -1}, Row{"Z", "a", 1}, Row{"z", "\xc3\xa4", -1},
                           Row{"_", "a", -1},  // between the cases in the table of bytes
                           Row{"\xc3\x84", "\xc3\xa4", -1}, Row{"a10", "a2", -1}})
        expectOrder(compareNoCase, row);
}

TEST(TextCompare, OrdersNumbersByTheirValue)
{
    for (const Row& row : {Row{"Sordelin (2)", "Sordelin (10)", -1}, Row{"a02", "a2", 0}, Row{"a02", "a1", 1},
                           Row{"a0", "a00", 0}, Row{"a1b2", "a01b3", -1}, Row{"take 7", "take7", 0},
                           Row{"take   12", "TAKE 9", 1}, Row{"take 7", "take x", -1}, Row{"a", "a1", -1},
                           Row{"a1", "a1b", -1}, Row{"99999999999999999999", "100000000000000000000", -1},
                           Row{"x 5", "x 5 ", -1}, Row{"", "", 0}, Row{"B1", "a2", 1}})
        expectOrder(compareNatural, row);
}
