#pragma once

#include "clap_host/StereoSignal.h"

#include <cstddef>
#include <vector>

// Plain measures of a rendering. Frames outside of a signal don't count.

/// The RMS of both channels from frame `first` up to `last`; 0 for silence or no frame.
double rmsBetween(const StereoSignal& signal, std::size_t first, std::size_t last) noexcept;

/// The level over time: the RMS of each `seconds` of the signal, in dB, at least `floorDb`.
std::vector<double> levelSteps(const StereoSignal& signal, double seconds, double floorDb);

/// The power of the difference of the channels over that of their sum, in dB, within -40..20: -40 is mono, 0
/// two sides that have nothing in common, 20 opposite signs. Silence counts as mono.
double widthDb(const StereoSignal& signal) noexcept;

/// How long the signal sounds on behind frame `inputEnd`: the time of the last 50 ms that are louder than 60
/// dB below its loudest 50 ms, in seconds.
struct Tail {
    double seconds = 0.0;
    bool longer = false;  // it still sounded at the end of the signal
};
Tail tailOf(const StereoSignal& signal, std::size_t inputEnd);

/// True if the sound behind frame `inputEnd` is louder in each of the last two quarters of what follows than
/// in the quarter before, by more than half a decibel, and not next to silence at the end.
bool growsAtTheEnd(const StereoSignal& signal, std::size_t inputEnd) noexcept;
