#include "dsp/SmoothingCoefficient.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

float log2Of(float x) noexcept { return static_cast<float>(std::log(x) * 1.4426950408889634); }

}  // namespace

float smoothingCoefficient(float frequency, float sampleRate) noexcept
{
    const float octaves = log2Of(frequency) - log2Of(sampleRate);
    const double ratio = std::min(std::exp(octaves * 0.6931471805599453), 1.0);
    return static_cast<float>(std::min(2.0 * std::sin(std::numbers::pi * ratio), 0.95));
}
