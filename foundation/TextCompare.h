#pragma once

#include <string_view>

// Orders of texts in lists. They go by bytes, with the letters "A" to "Z" as "a" to "z", and no locale:
// stored order is the same everywhere. The result is -1, 0 or 1, for `a` before, as, or after `b`.

/// A text that another one begins with comes before it.
int compareNoCase(std::string_view a, std::string_view b) noexcept;

/// Numbers within the texts go by their value, "(2)" before "(10)", and blanks before a number don't count.
/// Texts that differ in leading zeros alone are equal.
int compareNatural(std::string_view a, std::string_view b) noexcept;
