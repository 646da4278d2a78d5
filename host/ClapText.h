#pragma once

#include <cstddef>
#include <string_view>

/// Copies a text into a host's buffer, cut to its capacity at a character's border, and terminates it.
/// Thread: any.
void copyText(char* out, std::size_t capacity, std::string_view text);

/// The text in a host's array, up to its terminator, or all of it if there is none. Thread: any.
template <std::size_t capacity>
std::string_view textOf(const char (&array)[capacity])
{
    const std::string_view all(array, capacity);
    return all.substr(0, all.find('\0'));
}
