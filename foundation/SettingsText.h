#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// Settings as the text of a TOML file, which people read and edit: an integer, a string, or bytes as an array
// of integers from 0 to 255.

using SettingValue = std::variant<std::int32_t, std::string, std::vector<std::uint8_t>>;
using SettingValues = std::map<std::string, SettingValue, std::less<>>;

/// The settings of a text. What has another type, or stands in a table, isn't one. A larger integer is
/// brought to the nearest one of 32 bits; a string ends at its first 0. None if the text isn't TOML.
std::optional<SettingValues> parseSettings(const std::string& text);

/// The text with `changes` put in place of what has the same names, or added to it. Everything else stays:
/// comments, order, and what isn't ours. A string that isn't UTF-8 can't be kept, and is left out.
/// @param text  TOML, or empty
std::string changeSettings(const std::string& text, const SettingValues& changes);
