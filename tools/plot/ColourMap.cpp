#include "plot/ColourMap.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// Colourfulness and hue (degrees) of Oklab at a level; the lightness follows from the level alone.
struct Stop {
    double level;
    double chroma;
    double hue;
};

constexpr std::array stops{Stop{0.0, 0.020, 310.0},  Stop{0.22, 0.100, 330.0}, Stop{0.45, 0.155, 378.0},
                           Stop{0.66, 0.150, 408.0}, Stop{0.85, 0.125, 442.0}, Stop{1.0, 0.030, 458.0}};
constexpr double darkest = 0.17;  // Oklab lightness
constexpr double brightest = 0.97;

Stop between(double level)
{
    std::size_t upper = 1;
    while (upper + 1 < stops.size() && stops[upper].level < level)
        ++upper;
    const Stop& a = stops[upper - 1];
    const Stop& b = stops[upper];
    const double t = (level - a.level) / (b.level - a.level);
    return {level, std::lerp(a.chroma, b.chroma, t), std::lerp(a.hue, b.hue, t)};
}

std::uint32_t encoded(double linear)
{
    const double x = std::clamp(linear, 0.0, 1.0);
    const double curve = x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1.0 / 2.4) - 0.055;
    return static_cast<std::uint32_t>(std::lround(255.0 * curve));
}

/// Oklab to sRGB by its published matrices.
std::uint32_t fromOklab(double lightness, double a, double b)
{
    const double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3.0);
    const double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3.0);
    const double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3.0);
    const std::uint32_t red = encoded(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s);
    const std::uint32_t green = encoded(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s);
    const std::uint32_t blue = encoded(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s);
    return red << 16 | green << 8 | blue;
}

}  // namespace

ColourMap::ColourMap()
{
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const Stop stop = between(static_cast<double>(i) / static_cast<double>(colours.size() - 1));
        const double hue = stop.hue * std::numbers::pi / 180.0;
        colours[i] = fromOklab(std::lerp(darkest, brightest, stop.level), stop.chroma * std::cos(hue),
                               stop.chroma * std::sin(hue));
    }
}

std::uint32_t ColourMap::at(double level) const noexcept
{
    const double place = std::clamp(level, 0.0, 1.0) * static_cast<double>(colours.size() - 1);
    return colours[static_cast<std::size_t>(std::lround(place))];
}
