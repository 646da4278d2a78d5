#include "gui/Cubic.h"

namespace gui {

void Cubic::SetHermite(double x0, double y0, double m0, double x1, double y1, double m1)
{
    const double width = x1 - x0;
    if (width == 0.0) {
        a = y0;
        b = c = d = 0.0;
        return;
    }
    // Around x0 first: y0 + s0 u + p u^2 + q u^3 with u = x - x0, by the values and slopes at u = width.
    const double s0 = -m0;
    const double s1 = -m1;
    const double rise = (y1 - y0) / width;
    const double p = (3.0 * rise - 2.0 * s0 - s1) / width;
    const double q = (s0 + s1 - 2.0 * rise) / (width * width);
    a = y0 - s0 * x0 + p * x0 * x0 - q * x0 * x0 * x0;
    b = s0 - 2.0 * p * x0 + 3.0 * q * x0 * x0;
    c = p - 3.0 * q * x0;
    d = q;
}

float Cubic::ValueAt(float x) const
{
    const double at = x;
    return static_cast<float>(a + at * (b + at * (c + at * d)));
}

void CubicSegment::SetHermite(double x0, double y0, double m0, double x1, double y1, double m1)
{
    Cubic::SetHermite(x0, y0, m0, x1, y1, m1);
    leftX = x0;
    leftY = y0;
    rightX = x1;
    rightY = y1;
}

float CubicSegment::ValueAt(float x) const
{
    if (static_cast<double>(x) <= leftX)
        return static_cast<float>(leftY);
    if (static_cast<double>(x) >= rightX)
        return static_cast<float>(rightY);
    return Cubic::ValueAt(x);
}

}  // namespace gui
