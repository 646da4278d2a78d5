#pragma once

#include <cstddef>
#include <functional>
#include <vector>

/// Test signals and measurements on plain vectors, in double where the measurement needs it.
namespace signals {

/// `length` samples of a sine of `frequency` Hz, starting at 0.
std::vector<float> sine(double frequency, double sampleRate, std::size_t length, double amplitude = 1.0);
/// White noise in -1..1, the same for the same seed.
std::vector<float> noise(std::size_t length, unsigned seed);
std::vector<float> impulse(std::size_t length, std::size_t place = 0);

/// The largest difference between two signals of equal length.
double largestDifference(const std::vector<float>& a, const std::vector<float>& b);
/// The largest step between neighbouring samples of [from, to).
double largestStep(const std::vector<float>& signal, std::size_t from, std::size_t to);
/// The largest bend: the second difference, in which a jump, a gap or a repeated sample stands out by its
/// full height.
double largestBend(const std::vector<float>& signal);
/// The mean frequency in Hz over [from, to), from the places of rising zero crossings, interpolated.
double meanFrequency(const std::vector<float>& signal, std::size_t from, std::size_t to, double sampleRate);
double rms(const std::vector<float>& signal, std::size_t from, std::size_t to);

}  // namespace signals
