#include "dsp/FunctionTable.h"

#include <algorithm>
#include <bit>
#include <cmath>

void FunctionTable::prepare(int requestedSize, double bound, double otherBound)
{
    lowest = std::min(bound, otherBound);
    highest = std::max(bound, otherBound);
    count = static_cast<int>(std::bit_ceil(static_cast<unsigned>(std::max(requestedSize, 2))));
    step = (highest - lowest) / (count - 1);
    offset = (count - 1) * lowest / (highest - lowest);
    perStep = static_cast<float>(1.0 / step);
    offsetWhole = static_cast<int>(std::trunc(offset));
    offsetFraction = static_cast<float>(offset - std::trunc(offset));
    points.resize(static_cast<std::size_t>(count) + 1);
}

float FunctionTable::lookup(float x) const noexcept
{
    const float held = std::clamp(x, static_cast<float>(lowest), static_cast<float>(highest));
    const auto place = static_cast<float>(static_cast<double>(held * perStep) - offset);
    const int index = std::clamp(static_cast<int>(place), 0, count - 1);
    const float left = points[static_cast<std::size_t>(index)];
    const float right = points[static_cast<std::size_t>(index) + 1];
    return (right - left) * (place - static_cast<float>(index)) + left;
}
