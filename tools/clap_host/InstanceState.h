#pragma once

#include "clap_host/ClapInstance.h"

#include <cstddef>
#include <string>

// What a host keeps of an instance and gives back to it. Each throws ClapHostError if the plug-in lacks the
// extension. Thread: main.

/// The state, or nothing if the plug-in refuses. @param piece  the most bytes taken at once
std::optional<std::string> saveState(const ClapInstance& instance, std::size_t piece = 4096);
/// False if the plug-in refuses. @param piece  the most bytes given at once
bool loadState(const ClapInstance& instance, const std::string& state, std::size_t piece = 4096);
/// False if the plug-in refuses; the host's side then knows why. @param path  of a preset file
bool loadPresetFile(const ClapInstance& instance, const std::string& path);
