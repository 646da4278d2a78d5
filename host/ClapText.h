#pragma once

#include <cstddef>
#include <string_view>

/// Copies a text into a host's buffer, cut to its capacity at a character's border, and terminates it.
/// Thread: any.
void copyText(char* out, std::size_t capacity, std::string_view text);
