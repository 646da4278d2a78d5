#include "dsp/StateVariableTables.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr double thirdOfPi = 1.0471975511965976;

struct Point {
    double x, y;
};

/// On straight lines through the points; beyond them the outermost values.
template <std::size_t count>
double between(const Point (&points)[count], double x)
{
    if (x <= points[0].x)
        return points[0].y;
    for (std::size_t i = 1; i < count; ++i) {
        const Point& a = points[i - 1];
        const Point& b = points[i];
        if (x <= b.x)
            return a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x);
    }
    return points[count - 1].y;
}

constexpr Point peakLimits[] = {{-1.5, 1.0}, {-1.32, 0.085}, {-0.5, 0.04}, {0.4, 0.001}};
constexpr Point secondDampLimits[] = {{0.0, 2.0},  {0.55, 2.0}, {0.6, 1.67},  {0.65, 1.4}, {0.7, 1.0},
                                      {0.75, 0.8}, {0.8, 0.77}, {0.85, 0.73}, {0.9, 0.7},  {0.95, 0.65}};

}  // namespace

StateVariableTables::StateVariableTables()
{
    frequency.build(
        8192, [](double x) { return 2.0 * std::sin(std::min(std::exp2(x), 1.0) * thirdOfPi); }, -30, 20);
    peakLimit.build(
        512, [](double x) { return between(peakLimits, x); }, -30, 20);
    dampLimit.build(
        256, [](double x) { return x <= 0.01 ? 2.0 : std::min(2.0 / x - x, 2.0); }, 0, 1);
    dampLimit2.build(
        256, [](double x) { return between(secondDampLimits, x); }, 0, 1);
    damping.build(
        4096, [](double x) { return 2.0 * (1.0 - std::pow(x, 0.25)); }, 0, 5);
}
