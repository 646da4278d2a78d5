#pragma once

#include <cstdint>

/// A channel message of up to three bytes.
struct MidiMessage {
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
    std::int32_t offset = 0;  // samples from the start of the present sub-block
};
