#pragma once

#include "presets/PresetInfo.h"

#include <string>
#include <string_view>

/// A preset in the text form, with author, description and tags of `entry` in its header, and with its name
/// if there was one. Each of them stands where it stood, or behind the header's other keys; what is empty is
/// left out. All other lines stay byte for byte. Empty for a text that doesn't begin as a preset does.
/// Thread: any but audio.
std::string rewritePresetTextHeader(std::string_view text, const PresetInfo& entry);
