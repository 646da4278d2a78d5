#pragma once

#include <cstddef>
#include <span>
#include <string_view>

/// One file that the program carries within itself.
struct CarriedResource {
    std::string_view name;  // the stem of the file's name, in upper case
    std::span<const std::byte> bytes;
};

/// All that the program carries, in no order. The source is written by the build from the list in this
/// folder's CMakeLists.txt. Thread: any.
std::span<const CarriedResource> carriedResources() noexcept;
