#pragma once

#include "clap_host/ClapModule.h"

#include <filesystem>

/// The file of a preset: the one of this path, or the first of this name in the folders where the module says
/// that presets lie. Throws RenderError if there is none, with names that are near.
std::filesystem::path locatePreset(const ClapModule& module, const std::filesystem::path& pathOrName);
