#pragma once

#include "clap_host/StereoSignal.h"

#include <cstddef>
#include <vector>

/// How strong each pitch is at each moment, on a logarithmic axis of frequency.
class Spectrogram {
public:
    struct Settings {
        std::size_t columns = 0;  // of equal time, over `seconds`
        std::size_t rows = 0;     // of equal musical intervals, the highest first
        double seconds = 0.0;
        double lowestHz = 30.0;
        double highestHz = 20000.0;
    };

    /// Low pitches are seen through long windows, which tell them apart, and high ones through short windows,
    /// which show when they begin; in between two neighbouring lengths are blended.
    Spectrogram(const StereoSignal& signal, const Settings& settings);

    /// Decibels; a sine of full scale is 0, silence -140.
    float at(std::size_t column, std::size_t row) const noexcept { return levels[column * rowCount + row]; }
    /// Decibels.
    float highest() const noexcept;

private:
    std::size_t rowCount;
    std::vector<float> levels;  // column by column
};
