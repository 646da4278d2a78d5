#pragma once

#include <optional>
#include <string>
#include <string_view>

// Numbers as people write them, whatever the locale: the decimal sign is always the point.

/// `value` with exactly `decimals` digits behind the point, "inf", "-inf" or "nan"; never "-0.0".
std::string fixedText(double value, int decimals);

/// The number that `text` is as a whole, blanks around it allowed; nothing for all else, also "inf" and
/// "nan".
std::optional<double> parseNumber(std::string_view text) noexcept;

/// `text` without blanks, tabs and line ends around it.
std::string_view trimmed(std::string_view text) noexcept;
