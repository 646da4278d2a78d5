#include "dsp/SmoothingCoefficient.h"

#include "dsp/Conversions.h"

#include <algorithm>
#include <cmath>
#include <numbers>

float smoothingCoefficient(float frequency, float sampleRate) noexcept
{
    const float octaves = ratioToOctave(frequency) - ratioToOctave(sampleRate);
    const double ratio = std::min(std::exp(octaves * 0.6931471805599453), 1.0);
    return static_cast<float>(std::min(2.0 * std::sin(std::numbers::pi * ratio), 0.95));
}
