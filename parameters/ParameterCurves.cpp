#include "parameters/ParameterCurves.h"

#include "dsp/Conversions.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

/// A corner of a curve made of straight lines. Both coordinates rise from corner to corner.
struct Corner {
    double x;
    double y;
};

using Corners = std::span<const Corner>;

constexpr Corner knobCorners[] = {{0.0, 0.0},  {0.1, 0.002}, {0.25, 0.05}, {0.5, 0.16},
                                  {0.7, 0.36}, {0.9, 0.91},  {1.0, 1.0}};

constexpr Corner rateCorners[] = {{0.0, 0.0}, {0.2, 0.001}, {0.5, 0.007}, {0.7, 0.03},
                                  {0.8, 0.1}, {0.9, 0.3},   {0.95, 0.5},  {0.98, 1.0}};

constexpr Corner followerCorners[] = {{0.0, 0.0},  {0.15, 0.02}, {0.2, 0.03},  {0.33, 0.05}, {0.4, 0.07},
                                      {0.5, 0.1},  {0.6, 0.13},  {0.68, 0.17}, {0.75, 0.22}, {0.85, 0.35},
                                      {0.9, 0.46}, {0.95, 0.66}, {0.98, 0.82}, {1.0, 1.0}};

double lineThrough(double x0, double y0, double x1, double y1, double x) noexcept
{
    return y0 + (x - x0) * ((y1 - y0) / (x1 - x0));
}

float follow(Corners corners, float value) noexcept
{
    const double x = std::clamp(static_cast<double>(value), corners.front().x, corners.back().x);
    std::size_t end = 1;
    while (corners[end].x < x)
        ++end;
    const Corner& a = corners[end - 1];
    const Corner& b = corners[end];
    return static_cast<float>(lineThrough(a.x, a.y, b.x, b.y, x));
}

float followBack(Corners corners, float value) noexcept
{
    const double y = std::clamp(static_cast<double>(value), corners.front().y, corners.back().y);
    std::size_t end = 1;
    while (corners[end].y < y)
        ++end;
    const Corner& a = corners[end - 1];
    const Corner& b = corners[end];
    return static_cast<float>(lineThrough(a.y, a.x, b.y, b.x, y));
}

float knobForward(float x) noexcept { return std::copysign(follow(knobCorners, std::fabs(x)), x); }
float knobInverse(float y) noexcept { return std::copysign(followBack(knobCorners, std::fabs(y)), y); }
float rateForward(float x) noexcept { return follow(rateCorners, x); }
float rateInverse(float y) noexcept { return followBack(rateCorners, y); }
float followerForward(float x) noexcept { return follow(followerCorners, x); }
float followerInverse(float y) noexcept { return followBack(followerCorners, y); }

// The exponential part ends at 0.1 of the travel, 32.4 dB down; the straight part joins it there.
constexpr float straightTravel = 0.1f;
constexpr float straightGain = 0.023988325f;

float levelForward(float travel) noexcept
{
    if (travel > straightTravel)
        return static_cast<float>(std::exp((travel - 1.0) * 36.0 * 0.1151292546497023));
    return travel * 0.23988324f;
}

float levelInverse(float gain) noexcept
{
    if (gain > straightGain)
        return static_cast<float>(gainToDb(gain) * 0.027777778 + 1.0);
    return gain * 4.168695f;
}

}  // namespace

constinit const ParameterCurve knobCurve{knobForward, knobInverse};
constinit const ParameterCurve rateCurve{rateForward, rateInverse};
constinit const ParameterCurve followerCurve{followerForward, followerInverse};
constinit const ParameterCurve levelCurve{levelForward, levelInverse};
constinit const ParameterCurve octaveCurve{octaveToRatio, ratioToOctave};
constinit const ParameterCurve decibelCurve{dbToGain, gainToDb};
