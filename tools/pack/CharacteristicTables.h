#pragma once

#include <array>
#include <cstddef>

/// All that a filter characteristic consists of.
struct CharacteristicTables {
    /// Peak settings, 0 to 1, and as many frequencies.
    static constexpr std::size_t size = 11;
    /// Row by row: a row is a peak setting, a column a frequency.
    using Table = std::array<float, size * size>;

    float asymmetry = 0.0f;         // of the clipper, above 0; 1 is symmetric
    float minimumFrequency = 0.0f;  // log2 of Hz, of the first column
    float maximumFrequency = 0.0f;  // log2 of Hz, of the last column
    Table clipDrive{};
    Table cubic{};
    Table resonance{};
};
