#include "foundation/TextCompare.h"

#include <algorithm>

namespace {

constexpr int endOfText = -1;  // before every byte

bool isDigit(int c) noexcept { return c >= '0' && c <= '9'; }

bool isWhiteSpace(int c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

int order(int a, int b) noexcept { return (a > b) - (a < b); }

/// A walk through a text, in lower case.
class Walk {
public:
    explicit Walk(std::string_view text) noexcept : rest(text) {}

    int current() const noexcept
    {
        if (rest.empty())
            return endOfText;
        const auto c = static_cast<unsigned char>(rest.front());
        return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
    }
    void step() noexcept { rest.remove_prefix(1); }
    template <class Kind>
    void skip(Kind kind) noexcept
    {
        while (kind(current()))
            step();
    }
    /// The digits from here on, without leading zeros; the walk stands behind them then.
    std::string_view takeNumber() noexcept
    {
        skip([](int c) { return c == '0'; });
        const std::string_view start = rest;
        skip(isDigit);
        return start.substr(0, start.size() - rest.size());
    }

private:
    std::string_view rest;
};

int compareNumbers(std::string_view a, std::string_view b) noexcept
{
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return order(a.compare(b), 0);
}

}  // namespace

int compareNoCase(std::string_view a, std::string_view b) noexcept
{
    Walk walkA(a);
    Walk walkB(b);
    for (; walkA.current() == walkB.current(); walkA.step(), walkB.step()) {
        if (walkA.current() == endOfText)
            return 0;
    }
    return order(walkA.current(), walkB.current());
}

int compareNatural(std::string_view a, std::string_view b) noexcept
{
    Walk walkA(a);
    Walk walkB(b);
    for (;; walkA.step(), walkB.step()) {
        if (isDigit(walkA.current()))
            walkB.skip(isWhiteSpace);
        else if (isDigit(walkB.current()))
            walkA.skip(isWhiteSpace);
        if (isDigit(walkA.current()) && isDigit(walkB.current())) {
            if (const int numbers = compareNumbers(walkA.takeNumber(), walkB.takeNumber()))
                return numbers;
        }
        if (walkA.current() != walkB.current())
            return order(walkA.current(), walkB.current());
        if (walkA.current() == endOfText)
            return 0;
    }
}
