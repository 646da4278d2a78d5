#pragma once

#include "pack/CharacteristicTables.h"

#include <istream>
#include <string>

/// Reads a characteristic as people write it:
///
///     asymmetry    0.3
///     frequencies  2.2666 16.2064       # log2 of Hz, of the first and the last column
///
///     resonance                         # then clipDrive and cubic likewise, in any order
///     0.0: 0 0 0 0 0 0 0 0 0 0 0
///     0.1: ...                          # one row per peak setting up to 1.0, each of 11 numbers, none below
///     0
///
/// What follows a "#" is a comment. Throws PackError, with `fileName` and the line, for a text that doesn't
/// fit.
CharacteristicTables readCharacteristicText(std::istream& text, const std::string& fileName);
