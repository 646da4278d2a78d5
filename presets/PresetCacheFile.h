#pragma once

#include "foundation/ErrorResult.h"
#include "presets/PresetInfo.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// What the file of a preset cache holds, in this order:
///
///   "mvPC" and a 32-bit version
///   the root folders             from version 3 on
///   the presets                  path, time (64-bit), name, bank, program, author, description, tags
///   the favourites, as paths     in versions 2 and 3
///
/// Lists are led by their 32-bit count, texts by their length; numbers are little-endian.
struct PresetCacheFile {
    static constexpr std::int32_t currentVersion = 4;

    std::int32_t version = currentVersion;
    std::set<std::string> roots;
    std::vector<PresetInfo> presets;
    std::vector<std::string> favorites;  // as older versions keep them here

    /// False, with nothing in it, if there is no file that can be read to its end. Thread: any but audio.
    bool read(const std::string& path);
    /// Writes the current version, which doesn't hold favourites.
    ErrorResult write(const std::string& path) const;
};
