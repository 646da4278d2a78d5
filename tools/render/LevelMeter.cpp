#include "render/LevelMeter.h"

#include "clap_host/NumberText.h"

#include <algorithm>
#include <cmath>

LevelMeter::LevelMeter(const StereoSignal& signal)
{
    add(signal.left);
    add(signal.right);
}

void LevelMeter::add(std::span<const float> samples) noexcept
{
    for (const float sample : samples) {
        if (!std::isfinite(sample)) {
            ++nonFiniteCount;
            continue;
        }
        const double level = std::fabs(static_cast<double>(sample));
        peakLevel = std::max(peakLevel, level);
        sumOfSquares += level * level;
        ++count;
    }
}

double LevelMeter::rms() const noexcept
{
    return count > 0 ? std::sqrt(sumOfSquares / static_cast<double>(count)) : 0.0;
}

double decibels(double level) noexcept { return 20.0 * std::log10(level); }

std::string decibelText(double level)
{
    if (level <= 0.0)
        return "silence";
    const double db = decibels(level);
    std::string text(db >= 0.05 ? "+" : "");
    return text.append(fixedText(db, 1)).append(" dBFS");
}
