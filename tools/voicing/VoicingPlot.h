#pragma once

#include "dsp/DesignFilterStyle.h"

#include <filesystem>
#include <string>

/// Draws how a characteristic sounds, measured on the running filter, as a PNG file: its response at five
/// peak settings and three cut-offs, how long it rings or how loud it sings, its output over its input level,
/// and what it sings over the cut-off. False if the file can't be written.
bool writeVoicingPlot(const DesignFilterStyle& style, const std::string& name,
                      const std::filesystem::path& file);
