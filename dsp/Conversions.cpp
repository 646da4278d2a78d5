#include "dsp/Conversions.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float silenceDb = -180.0f;

// The straight part of the conversions with zero runs from (-5.643856, 0) to (-3, 1/8), where the exponential
// starts.
constexpr float straightLowestOctave = -5.643856f;  // log2 of 0.02
constexpr float straightHighestOctave = -3.0f;
constexpr float straightHighestRatio = 0.125f;

}  // namespace

float dbToGain(float db) noexcept
{
    return static_cast<float>(std::exp(db * 0.1151292546497023));  // ln 10 / 20
}

float gainToDb(float gain) noexcept
{
    const float size = std::fabs(gain);
    if (size <= 1e-10f)
        return silenceDb;
    return std::max(static_cast<float>(20.0 * std::log10(static_cast<double>(size))), silenceDb);
}

float octaveToRatio(float octaves) noexcept { return std::exp2(octaves); }

float ratioToOctave(float ratio) noexcept
{
    return static_cast<float>(std::log(ratio) * 1.4426950408889634);  // 1 / ln 2
}

float octavesToSemitones(float octaves) noexcept { return octaves * 12.0f; }

float semitonesToOctaves(float semitones) noexcept { return semitones * 0.083333336f; }

float octaveToRatioWithZero(float octaves) noexcept
{
    if (octaves > straightHighestOctave)
        return octaveToRatio(octaves);
    return (std::clamp(octaves, straightLowestOctave, straightHighestOctave) - straightLowestOctave) *
           0.04727943f;
}

float ratioToOctaveWithZero(float ratio) noexcept
{
    if (ratio > straightHighestRatio)
        return ratioToOctave(ratio);
    return std::clamp(ratio, 0.0f, straightHighestRatio) * 21.150848f + straightLowestOctave;
}
