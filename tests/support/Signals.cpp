#include "support/Signals.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace signals {

std::vector<float> sine(double frequency, double sampleRate, std::size_t length, double amplitude)
{
    std::vector<float> signal(length);
    for (std::size_t i = 0; i < length; ++i)
        signal[i] = static_cast<float>(
            amplitude * std::sin(2.0 * std::numbers::pi * frequency * static_cast<double>(i) / sampleRate));
    return signal;
}

std::vector<float> noise(std::size_t length, unsigned seed)
{
    std::minstd_rand generator(seed);
    std::vector<float> signal(length);
    for (float& sample : signal)
        sample = static_cast<float>(static_cast<double>(generator()) / 1073741824.0 - 1.0);
    return signal;
}

std::vector<float> impulse(std::size_t length, std::size_t place)
{
    std::vector<float> signal(length, 0.0f);
    signal[place] = 1.0f;
    return signal;
}

double largestDifference(const std::vector<float>& a, const std::vector<float>& b)
{
    if (a.size() != b.size())
        return HUGE_VAL;
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::fabs(static_cast<double>(a[i]) - b[i]));
    return largest;
}

double largestStep(const std::vector<float>& signal, std::size_t from, std::size_t to)
{
    double largest = 0.0;
    for (std::size_t i = from + 1; i < to; ++i)
        largest = std::max(largest, std::fabs(static_cast<double>(signal[i]) - signal[i - 1]));
    return largest;
}

double largestBend(const std::vector<float>& signal)
{
    double largest = 0.0;
    for (std::size_t i = 2; i < signal.size(); ++i)
        largest = std::max(largest,
                           std::fabs(static_cast<double>(signal[i]) - 2.0 * signal[i - 1] + signal[i - 2]));
    return largest;
}

double meanFrequency(const std::vector<float>& signal, std::size_t from, std::size_t to, double sampleRate)
{
    double first = -1.0;
    double last = -1.0;
    int periods = -1;
    for (std::size_t i = from + 1; i < to; ++i) {
        if (!(signal[i - 1] < 0.0f && signal[i] >= 0.0f))
            continue;
        const double before = signal[i - 1];
        last = static_cast<double>(i - 1) - before / (signal[i] - before);
        if (periods++ < 0)
            first = last;
    }
    return periods < 1 ? 0.0 : sampleRate * periods / (last - first);
}

double rms(const std::vector<float>& signal, std::size_t from, std::size_t to)
{
    double sum = 0.0;
    for (std::size_t i = from; i < to; ++i)
        sum += static_cast<double>(signal[i]) * signal[i];
    return std::sqrt(sum / static_cast<double>(to - from));
}

}  // namespace signals
