#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Shortens a name to at most `maxChars` bytes, from the gentle (known words get their usual short forms) to
/// the rough (initials, vowels left out). 0 asks for no limit. Thread: any but audio.
std::string abbreviate(std::string_view text, std::size_t maxChars);

/// Compares byte by byte, the letters A to Z without regard to case, a shorter text first on a tie.
/// Returns below, at or above 0, as `a` comes before, with or behind `b`.
int compareIgnoringCase(std::string_view a, std::string_view b);
