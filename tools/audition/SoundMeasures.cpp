#include "audition/SoundMeasures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double tailStepSeconds = 0.05;
constexpr double tailRangeDb = 60.0;
constexpr double growthFactor = 1.06;  // half a decibel
constexpr double audibleRms = 3.2e-3;  // -50 dBFS

double toDb(double gain, double floorDb)
{
    return gain > 0.0 ? std::max(20.0 * std::log10(gain), floorDb) : floorDb;
}

}  // namespace

double rmsBetween(const StereoSignal& signal, std::size_t first, std::size_t last) noexcept
{
    last = std::min(last, signal.frames());
    if (first >= last)
        return 0.0;
    double sum = 0.0;
    for (std::size_t i = first; i < last; ++i)
        sum += static_cast<double>(signal.left[i]) * signal.left[i] +
               static_cast<double>(signal.right[i]) * signal.right[i];
    return std::sqrt(sum / (2.0 * static_cast<double>(last - first)));
}

std::vector<double> levelSteps(const StereoSignal& signal, double seconds, double floorDb)
{
    const auto step = static_cast<std::size_t>(seconds * signal.sampleRate);
    std::vector<double> levels;
    for (std::size_t first = 0; first + step <= signal.frames(); first += step)
        levels.push_back(toDb(rmsBetween(signal, first, first + step), floorDb));
    return levels;
}

double widthDb(const StereoSignal& signal) noexcept
{
    double middle = 0.0;
    double side = 0.0;
    for (std::size_t i = 0; i < signal.frames(); ++i) {
        const double sum = static_cast<double>(signal.left[i]) + signal.right[i];
        const double difference = static_cast<double>(signal.left[i]) - signal.right[i];
        middle += sum * sum;
        side += difference * difference;
    }
    if (side <= 0.0)
        return -40.0;
    return middle > 0.0 ? std::clamp(10.0 * std::log10(side / middle), -40.0, 20.0) : 20.0;
}

Tail tailOf(const StereoSignal& signal, std::size_t inputEnd)
{
    const std::vector<double> levels = levelSteps(signal, tailStepSeconds, -200.0);
    if (levels.empty())
        return {};
    const double quiet = *std::ranges::max_element(levels) - tailRangeDb;
    const double endStep = static_cast<double>(inputEnd) / (tailStepSeconds * signal.sampleRate);
    for (std::size_t i = levels.size(); i-- > 0;) {
        if (levels[i] > quiet && levels[i] > -199.0)
            return {std::max(static_cast<double>(i + 1) - endStep, 0.0) * tailStepSeconds,
                    i + 1 == levels.size()};
    }
    return {};
}

bool growsAtTheEnd(const StereoSignal& signal, std::size_t inputEnd) noexcept
{
    if (inputEnd >= signal.frames())
        return false;
    const std::size_t quarter = (signal.frames() - inputEnd) / 4;
    const double second = rmsBetween(signal, inputEnd + quarter, inputEnd + 2 * quarter);
    const double third = rmsBetween(signal, inputEnd + 2 * quarter, inputEnd + 3 * quarter);
    const double fourth = rmsBetween(signal, inputEnd + 3 * quarter, inputEnd + 4 * quarter);
    return fourth > audibleRms && fourth > third * growthFactor && third > second * growthFactor;
}
