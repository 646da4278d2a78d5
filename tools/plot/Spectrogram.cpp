#include "plot/Spectrogram.h"

#include "plot/Spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <memory>

namespace {

constexpr float silenceDb = -140.0f;

// A window of about 0.19 s tells neighbouring notes apart around 80 Hz. Each octave above has the next
// shorter window, two steps of which halve the length.
constexpr double longestWindow = 0.19;  // seconds
constexpr double longestWindowHz = 80.0;
constexpr std::size_t windowCount = 7;

/// The levels of one window length at one moment, to be read at any frequency.
class Resolution {
public:
    Resolution(std::size_t size, double sampleRate)
        : spectrum(size),
          binHz(sampleRate / static_cast<double>(size)),
          power(spectrum.bins()),
          decibels(spectrum.bins())
    {}

    /// The mean over a column of time, in frames.
    void measure(const StereoSignal& signal, double begin, double end)
    {
        const double halfWindow = 0.5 * static_cast<double>(spectrum.size());
        const int pieces = std::clamp(static_cast<int>(std::ceil((end - begin) / halfWindow)), 1, 8);
        std::ranges::fill(power, 0.0);
        for (int piece = 0; piece < pieces; ++piece)
            spectrum.addPower(signal, begin + (end - begin) * (piece + 0.5) / pieces, power);
        for (std::size_t bin = 0; bin < power.size(); ++bin)
            decibels[bin] =
                std::max(silenceDb, static_cast<float>(10.0 * std::log10(power[bin] / pieces + 1e-30)));
    }

    /// The strongest between two frequencies, or, where they lie in one bin, what lies between the bins.
    float levelBetween(double lowHz, double highHz) const
    {
        const double last = static_cast<double>(decibels.size() - 1);
        const double low = std::clamp(lowHz / binHz, 0.0, last);
        const double high = std::clamp(highHz / binHz, 0.0, last);
        float level = std::max(interpolated(low), interpolated(high));
        for (auto bin = static_cast<std::size_t>(std::ceil(low)); static_cast<double>(bin) <= high; ++bin)
            level = std::max(level, decibels[bin]);
        return level;
    }

private:
    float interpolated(double place) const
    {
        const auto below = static_cast<std::size_t>(place);
        const std::size_t above = std::min(below + 1, decibels.size() - 1);
        return std::lerp(decibels[below], decibels[above], static_cast<float>(place - std::floor(place)));
    }

    Spectrum spectrum;
    double binHz;
    std::vector<double> power;
    std::vector<float> decibels;
};

std::vector<std::unique_ptr<Resolution>> makeResolutions(double sampleRate)
{
    std::vector<std::unique_ptr<Resolution>> resolutions;
    const auto longest = std::bit_ceil(static_cast<std::size_t>(longestWindow * sampleRate * 0.75));
    for (std::size_t i = 0; i < windowCount; ++i) {
        // Three quarters stand for the root of a half: the transform likes small factors.
        const std::size_t halved = longest >> (i / 2);
        resolutions.push_back(std::make_unique<Resolution>(i % 2 == 0 ? halved : halved / 4 * 3, sampleRate));
    }
    return resolutions;
}

float blendedLevel(const std::vector<std::unique_ptr<Resolution>>& resolutions, double lowHz, double highHz)
{
    const double octaves = std::log2(std::sqrt(lowHz * highHz) / longestWindowHz);
    const double place = std::clamp(octaves, 0.0, windowCount - 1.0);
    const auto longer = static_cast<std::size_t>(place);
    const std::size_t shorter = std::min(longer + 1, windowCount - 1);
    return std::lerp(resolutions[longer]->levelBetween(lowHz, highHz),
                     resolutions[shorter]->levelBetween(lowHz, highHz),
                     static_cast<float>(place - std::floor(place)));
}

}  // namespace

Spectrogram::Spectrogram(const StereoSignal& signal, const Settings& settings)
    : rowCount(settings.rows), levels(settings.columns * settings.rows)
{
    const auto resolutions = makeResolutions(signal.sampleRate);
    const double framesPerColumn =
        settings.seconds * signal.sampleRate / static_cast<double>(settings.columns);
    const double interval = settings.highestHz / settings.lowestHz;
    const auto edgeHz = [&](std::size_t row) {
        return settings.highestHz *
               std::pow(interval, -static_cast<double>(row) / static_cast<double>(rowCount));
    };
    for (std::size_t column = 0; column < settings.columns; ++column) {
        const double begin = static_cast<double>(column) * framesPerColumn;
        for (const auto& resolution : resolutions)
            resolution->measure(signal, begin, begin + framesPerColumn);
        for (std::size_t row = 0; row < rowCount; ++row)
            levels[column * rowCount + row] = blendedLevel(resolutions, edgeHz(row + 1), edgeHz(row));
    }
}

float Spectrogram::highest() const noexcept { return levels.empty() ? silenceDb : std::ranges::max(levels); }
