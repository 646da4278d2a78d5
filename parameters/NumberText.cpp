#include "parameters/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct NumberFormat {
    bool significant;  // the decimals shrink as the number grows
    bool plusSign;
    int decimals;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

NumberFormat readFormat(std::string_view format)
{
    NumberFormat result{format.starts_with('*'), false, 0};
    if (const auto plus = format.find('+'); plus != std::string_view::npos)
        result.plusSign = true;
    const auto count = std::find_if(format.begin(), format.end(), isDigit);
    if (count != format.end() && !format.ends_with('d'))
        result.decimals = *count - '0';
    return result;
}

std::string printFixed(double value, int decimals)
{
    std::array<char, 330> buffer;  // a double has up to 309 digits before the point
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, decimals);
    return {buffer.data(), end.ptr};
}

/// The number of digits of `decimals` + 1 at most: 9.999, 10.00, 100.0. It goes by the printed text, so that
/// a number which rounds up to the next power of ten loses a decimal with it, and reads back as the same
/// text.
std::string printSignificant(double value, int decimals)
{
    for (int remaining = decimals; remaining > 0; --remaining) {
        std::string text = printFixed(value, remaining);
        const auto digits = std::count_if(text.begin(), text.end(), isDigit);
        if (digits <= decimals + 1)
            return text;
    }
    return printFixed(value, 0);
}

bool isZero(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return c >= '1' && c <= '9'; });
}

/// Both readers share the sign rule: one sign, which may be a plus.
template <class T, class... Format>
std::optional<LeadingNumber> readLeading(std::string_view text, Format... format)
{
    text = skipBlanks(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    T value{};
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value, format...);
    const auto number = static_cast<double>(value);
    if (error != std::errc() || std::isnan(number))
        return std::nullopt;
    return LeadingNumber{number, {rest, static_cast<std::size_t>(end - rest)}};
}

}  // namespace

std::string formatNumber(double value, std::string_view format)
{
    if (value >= infinity)
        return "INF";
    if (!(value > -infinity))
        return "-INF";
    const NumberFormat parts = readFormat(format);
    std::string text =
        parts.significant ? printSignificant(value, parts.decimals) : printFixed(value, parts.decimals);
    if (isZero(text)) {
        if (text.starts_with('-'))
            text.erase(0, 1);
    } else if (parts.plusSign && value > 0.0) {
        text.insert(0, 1, '+');
    }
    return text;
}

std::string frequencyText(float hz)
{
    // Each limit is where the finer format would round up to one more digit.
    const double value = hz;
    if (value > 9999.95)
        return formatNumber(value, "%.0f");
    if (value > 999.995)
        return formatNumber(value, "%.1f");
    return formatNumber(value, value > 99.9995 ? "%.2f" : "%.3f");
}

std::string timeText(float milliseconds)
{
    // From 999.95 ms on the text would be "1000 ms", which reads back as one second and then prints as such.
    if (milliseconds >= 999.95)
        return formatNumber(milliseconds * 0.001, "*3f") + " sec";
    return formatNumber(milliseconds, "*3f") + " ms";
}

std::string dbText(float db)
{
    // A thousandth of room, so that -179.90 reads back as itself when the way through a gain costs a
    // rounding.
    if (db < -179.901f)
        return "-INF";
    return formatNumber(db, "%+.2f");
}

std::string_view skipBlanks(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::optional<LeadingNumber> readNumber(std::string_view text)
{
    return readLeading<double>(text, std::chars_format::general);
}

std::optional<LeadingNumber> readWholeNumber(std::string_view text) { return readLeading<int>(text); }
