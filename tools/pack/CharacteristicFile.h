#pragma once

#include "pack/CharacteristicTables.h"

#include <string>

/// The bytes of a .fil file: "MVil", version 1, asymmetry, lowest and highest frequency, then clipDrive,
/// cubic and resonance, each led by its size. Numbers are of 4 bytes, little-endian.
std::string characteristicFile(const CharacteristicTables& tables);
