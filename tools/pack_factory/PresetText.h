#pragma once

#include <string>
#include <string_view>

/// Makes the binary form of a preset from its source, a preset in the text form. What the source doesn't name
/// has its default.
///
/// Sources are held to more than presets of users are: every key must be known, every value a number within
/// its range. Throws PackError, with file and line, for anything else.
/// @param fileName  for what goes wrong; its extension tells a preset of the whole plug-in, ".mvp", from
/// those
///                  of sections
std::string packPreset(const std::string& text, std::string_view fileName);
