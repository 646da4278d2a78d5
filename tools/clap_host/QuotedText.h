#pragma once

#include <string>
#include <string_view>

/// `text` in double quotes, as messages show names and paths.
inline std::string inQuotes(std::string_view text) { return std::string("\"").append(text).append("\""); }
