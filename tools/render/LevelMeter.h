#pragma once

#include "clap_host/StereoSignal.h"

#include <cstddef>
#include <span>
#include <string>

/// Peak and RMS of all samples it has been given. Samples that are no finite numbers are only counted.
class LevelMeter {
public:
    LevelMeter() = default;
    /// Measures both channels as one.
    explicit LevelMeter(const StereoSignal& signal);

    void add(std::span<const float> samples) noexcept;

    /// Full scale is 1; 0 before the first sample.
    double peak() const noexcept { return peakLevel; }
    double rms() const noexcept;
    std::size_t nonFinite() const noexcept { return nonFiniteCount; }

private:
    double peakLevel = 0.0;
    double sumOfSquares = 0.0;
    std::size_t count = 0;  // finite samples
    std::size_t nonFiniteCount = 0;
};

/// Decibels relative to full scale; minus infinity for 0.
double decibels(double level) noexcept;

/// "-12.3 dBFS", "+1.0 dBFS", or "silence" for 0.
std::string decibelText(double level);
