#pragma once

#include "clap_host/StereoSignal.h"
#include "plot/Spectrum.h"

#include <array>
#include <cstddef>
#include <vector>

/// Looks at the short-time spectrum of signals: their mean, and how much it moves.
///
/// Make it on one thread at a time: the transform's planner isn't safe for several. Measuring is, each thread
/// with its own object.
class SpectralMovement {
public:
    static constexpr std::size_t octaves = 8;          // from 62.5 Hz, each around its double
    static constexpr std::size_t bandsPerOctave = 12;  // a bend of a semitone changes the band
    static constexpr std::size_t bandCount = octaves * bandsPerOctave;
    static constexpr double lowestHz = 55.0;

    struct Reading {
        double centroidHz = 0.0;                    // of the mean power; 0 for silence
        double variance = 0.0;                      // dB squared, over time, bands weighted by their power
        std::array<double, octaves> octavePower{};  // mean
    };

    SpectralMovement() : spectrum(pieceSize) {}

    /// Reads the frames from `first` up to `last`, in pieces of 93 ms at 44.1 kHz.
    Reading read(const StereoSignal& signal, std::size_t first, std::size_t last);

private:
    static constexpr std::size_t pieceSize = 4096;

    using Bands = std::array<double, bandCount>;  // power
    Bands bandsAt(const StereoSignal& signal, double centre);

    Spectrum spectrum;
    std::vector<double> power;
};

/// How much `wet` moves beyond what moves in `dry`, in dB of level per band: the root of what the variance of
/// the one has above that of the other.
double movementDb(const SpectralMovement::Reading& wet, const SpectralMovement::Reading& dry) noexcept;
