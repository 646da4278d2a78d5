#pragma once

#include "modulation/XLFO.h"

#include <algorithm>
#include <cmath>
#include <vector>

/// What an XLFO should play, as a function of its phase.
struct XLFOShape {
    struct Step {
        double value = 0.0;
        double glide = 0.0;
        XLFO::GlideCurve curve = XLFO::GlideCurve::Linear;
    };

    /// The output at a phase: steps are even on a scale on which the balance point is the middle.
    double at(double phase, double rateHz = 0.0) const
    {
        const double count = static_cast<double>(steps.size());
        const double centre = balance;
        phase -= std::floor(phase);
        const double place = phase < centre ? phase / centre * count / 2.0
                                            : (1.0 + (phase - centre) / (1.0 - centre)) * count / 2.0;
        const auto index = std::min(static_cast<std::size_t>(place), steps.size() - 1);
        const Step& step = steps[index];
        const double next = steps[(index + 1) % steps.size()].value;
        const double floor = rateHz * 0.0002 * (rateHz * 0.0002);
        const double length = std::min(std::max(step.glide + addedGlide, floor), 1.0);
        const double x = (place - static_cast<double>(index) - 1.0) / length + 1.0;
        return x > 0.0 ? step.value + (next - step.value) * curved(step.curve, x) : step.value;
    }
    static double curved(XLFO::GlideCurve curve, double x)
    {
        switch (curve) {
        case XLFO::GlideCurve::Square:
            return x * x;
        case XLFO::GlideCurve::SquareRoot:
            return std::sqrt(x);
        case XLFO::GlideCurve::Sine:
            return 0.5 - 0.5 * std::cos(x * 3.141592653589793);
        default:
            return x;
        }
    }

    std::vector<Step> steps;
    float balance = 0.5f;
    double addedGlide = 0.0;
};
