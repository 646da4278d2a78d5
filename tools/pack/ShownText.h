#pragma once

#include <string_view>

/// True unless a parameter that was set to the text `written` shows something clearly else: a number that is
/// off by more than a rounding, as one beyond the range is, or other words. Where the units differ, as in
/// "1500 ms" and "1.500 sec", numbers aren't compared.
bool showsWhatWasWritten(std::string_view written, std::string_view shown) noexcept;
