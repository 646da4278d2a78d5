#pragma once

#include "foundation/ErrorResult.h"
#include "presets/PresetInfo.h"

#include <string>
#include <string_view>
#include <vector>

// What a preset file says about itself, in both of its forms. Parameters are left alone. Thread: any but
// audio.

/// Fills author, description and tags of `entry`; what the file doesn't name is empty. A file without
/// metadata is no failure. False, and all of it is empty, for what isn't a preset.
bool readPresetMetadata(const std::string& path, PresetInfo& entry);

/// Brings author, description and tags of `entry` into its file, and, where a text file holds a name, that
/// too. Everything else in the file stays, and on failure all of it. Sets the entry's modification time.
ErrorResult writePresetMetadata(PresetInfo& entry);

/// Tags are one text in a file, with a "," between them: "a," has a second tag, which is empty.
std::vector<std::string> splitTags(std::string_view text);
std::string joinTags(const std::vector<std::string>& tags);
