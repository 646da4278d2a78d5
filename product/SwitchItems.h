#pragma once

#include <string_view>

/// The item names that several switches share.
inline constexpr std::string_view offOnItems[] = {"Off", "On"};
inline constexpr std::string_view disabledEnabledItems[] = {"Disabled", "Enabled"};
