#pragma once

#include <cstddef>
#include <vector>

/// Two channels of sound of the same length. Full scale is -1..1.
struct StereoSignal {
    double sampleRate = 0.0;  // Hz
    std::vector<float> left;
    std::vector<float> right;

    std::size_t frames() const noexcept { return left.size(); }
    double seconds() const noexcept { return static_cast<double>(frames()) / sampleRate; }
    /// New frames are silent.
    void resize(std::size_t newFrames)
    {
        left.resize(newFrames);
        right.resize(newFrames);
    }
};
