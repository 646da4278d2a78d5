#pragma once

#include "audition/AuditionReport.h"

#include <filesystem>

/// Draws all presets side by side as a PNG file: each with its name, its measures, the spectrogram of the
/// strings with their tail, and the level of the drums below it. Those with faults stand in red. False if the
/// file can't be written.
/// @param columns  presets in a row
/// @param scale    pixels per unit; a preset is 250 units wide
bool writeContactSheet(const AuditionReport& report, int columns, double scale,
                       const std::filesystem::path& file);
