#pragma once

#include "foundation/Paths.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// What is known of one preset file. Thread: that of its owner.
struct PresetInfo {
    PresetInfo() = default;
    /// Nothing of the file is looked at. @param file  UTF-8
    explicit PresetInfo(std::string file) : path(std::move(file)), name(baseName(path)) {}

    std::string author;       // this and `description` and `tags` only once the file's metadata has been read
    std::string description;  //
    std::string path;
    std::uint64_t modificationTime = 0;  // seconds since 1970
    std::string name;                    // of the file, without folder and extension
    std::string label;                   // "(bank/program) name", once numbered
    std::int32_t bank = -1;              // -1 until numbered
    std::int32_t program = 0;            // 0..127
    std::vector<std::string> tags;
};
