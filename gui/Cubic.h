#pragma once

#include "gui/Curve.h"

namespace gui {

/// y(x) = a + b x + c x^2 + d x^3.
class Cubic : public Curve {
public:
    Cubic() = default;
    Cubic(double a0, double b1, double c2, double d3) : a(a0), b(b1), c(c2), d(d3) {}

    /// The cubic through (x0, y0) and (x1, y1) whose slopes there are -m0 and -m1: a positive m rises on a
    /// screen, where y grows downwards. With x0 equal to x1 it is y0 everywhere.
    virtual void SetHermite(double x0, double y0, double m0, double x1, double y1, double m1);
    float ValueAt(float x) const override;

private:
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
};

/// A cubic between two points, constant beyond them.
class CubicSegment : public Cubic {
public:
    void SetHermite(double x0, double y0, double m0, double x1, double y1, double m1) override;
    float ValueAt(float x) const override;

private:
    double leftX = 0.0;
    double leftY = 0.0;
    double rightX = 0.0;
    double rightY = 0.0;
};

}  // namespace gui
