#pragma once

#include <string>
#include <string_view>

/// Makes the binary form of a preset from its source: a preset in the text form, but with values as the
/// plug-in shows them, such as "350 ms" or "Tube". What the source doesn't name has its default.
///
/// Throws PackError, with file and line, for an unknown or repeated key, for a value that the parameter can't
/// read, and for one that it shows as something else, as beyond its range.
/// @param fileName  for what goes wrong; its extension tells a preset of the whole plug-in, ".mvp", from
/// those
///                  of sections
std::string packPreset(const std::string& text, std::string_view fileName);
