#include "pack/ShownText.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace {

// The plug-in shows three digits behind the point, or four in all.
constexpr double roundingStep = 0.006;
constexpr double roundingPart = 0.01;

/// A number and the word behind it.
struct Quantity {
    std::optional<double> number;
    std::string_view unit;
};

Quantity quantityOf(std::string_view text) noexcept
{
    const std::string_view digits = text.starts_with('+') ? text.substr(1) : text;
    double number = 0.0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc())
        return {std::nullopt, text};
    std::string_view unit = digits.substr(static_cast<std::size_t>(read.ptr - digits.data()));
    while (unit.starts_with(' '))
        unit.remove_prefix(1);
    return {number, unit};
}

/// Unlike the rest of "1/16".
bool isWord(std::string_view unit) noexcept
{
    return !unit.empty() && ((unit[0] >= 'a' && unit[0] <= 'z') || (unit[0] >= 'A' && unit[0] <= 'Z'));
}

}  // namespace

bool showsWhatWasWritten(std::string_view written, std::string_view shown) noexcept
{
    if (written == shown)
        return true;
    const Quantity asked = quantityOf(written);
    const Quantity got = quantityOf(shown);
    if (!asked.number || !got.number)
        return false;
    if (asked.unit != got.unit)
        return isWord(asked.unit) && isWord(got.unit);
    return std::abs(*asked.number - *got.number) <= roundingStep + roundingPart * std::abs(*asked.number);
}
