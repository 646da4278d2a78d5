#pragma once

#include "support/TemporaryHome.h"

#include <cstdint>
#include <map>
#include <string>

/// The bytes of a controller map, put together by hand: "MVCM", version 1, 128 targets, low bytes first.
inline std::string controllerMapBytes(const std::map<int, std::int32_t>& targets)
{
    const auto number = [](std::int32_t value) {
        std::string bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(static_cast<std::uint32_t>(value) >> shift & 0xFF);
        return bytes;
    };
    std::string bytes = "MVCM" + number(1);
    for (int controller = 0; controller < 128; ++controller) {
        const auto target = targets.find(controller);
        bytes += number(target == targets.end() ? -1 : target->second);
    }
    return bytes;
}

/// Puts a map where the next first instance finds it.
inline void writeControllerMap(const std::filesystem::path& productData, const std::string& bytes)
{
    std::filesystem::create_directories(productData);
    std::ofstream(productData / "MidiControllerMap.mvm", std::ios::binary) << bytes;
}
