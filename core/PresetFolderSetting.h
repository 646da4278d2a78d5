#pragma once

#include <string>

/// Under which the folder of presets stands in the settings.
inline constexpr const char* presetFolderKey = "PresetFolder";

/// The folder of presets that the user has chosen for a major version of a product; `fallback` if none.
/// Reads the user's settings alone, and touches no folder. Thread: any but audio.
/// @param product  without its version
std::string presetFolderSetting(const std::string& product, int majorVersion, const std::string& fallback);
