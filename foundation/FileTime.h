#pragma once

#include <cstdint>
#include <string>

/// When a file was last written, in seconds since 1970; 0 if there is none. Thread: any but audio.
std::uint64_t fileModificationTime(const std::string& path);
