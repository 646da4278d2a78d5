#include "clap_host/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

std::string fixedText(double value, int decimals)
{
    std::array<char, 400> text{};  // the largest double has 309 digits before the point
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    const std::string result(text.data(), end.ptr);
    const bool negativeZero = result.find_first_not_of("-0.") == std::string::npos && result.starts_with('-');
    return negativeZero ? result.substr(1) : result;
}

std::optional<double> parseNumber(std::string_view text) noexcept
{
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string_view trimmed(std::string_view text) noexcept
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}
