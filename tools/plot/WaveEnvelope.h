#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// What one column of a waveform shows.
struct EnvelopeColumn {
    float lowest = 0.0f;
    float highest = 0.0f;
    float rms = 0.0f;
};

/// Sums up `samples` in columns of equal time. Samples that are no finite numbers count as 0.
/// @param columns          the number of columns
/// @param samplesPerColumn may be below 1, and need not be whole; columns behind the last sample are missing
std::vector<EnvelopeColumn> waveEnvelope(std::span<const float> samples, std::size_t columns,
                                         double samplesPerColumn);
