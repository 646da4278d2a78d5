#pragma once

#include <algorithm>
#include <cmath>

namespace gui {

/// The integral of x clamped to 0..1.
inline float ClampIntegral(float x) noexcept
{
    if (x <= 0.0f)
        return 0.0f;
    return x < 1.0f ? 0.5f * x * x : x - 0.5f;
}

/// The area, 0..1, of the part of pixel [pixel, pixel + 1] of a column that lies beyond a slanted edge,
/// towards greater coordinates. The edge stands at `edge` in the column's middle and moves by `slope` over
/// the column.
inline float AreaBeyond(float pixel, float edge, float slope) noexcept
{
    const float rest = pixel + 1.0f - edge;
    const float rise = std::abs(slope);
    // Less of a slope than this moves no edge by a visible part, but divides by next to nothing.
    if (rise < 0.001f)
        return std::clamp(rest, 0.0f, 1.0f);
    return (ClampIntegral(rest + 0.5f * rise) - ClampIntegral(rest - 0.5f * rise)) / rise;
}

inline int ToCoverage(float share) noexcept
{
    return static_cast<int>(std::clamp(share, 0.0f, 1.0f) * 255.0f + 0.5f);
}

}  // namespace gui
