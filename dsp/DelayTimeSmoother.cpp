#include "dsp/DelayTimeSmoother.h"

#include "dsp/SmoothingCoefficient.h"

#include <cmath>

void DelayTimeSmoother::reset() noexcept
{
    coefficient = smoothingCoefficient(frequency, environment.sampleRate());
    fresh = true;
}

void DelayTimeSmoother::start(double delay) noexcept
{
    fresh = false;
    velocity = 0.0;
    position = delay;
}

bool DelayTimeSmoother::isAt(int delay) const noexcept
{
    return std::fabs(position - delay) < 0.0010000000474974513;
}

void DelayTimeSmoother::chase(const float* times, float scale, float offset, float* delays,
                              int count) noexcept
{
    if (fresh)
        start(std::trunc(scale * times[0] + offset));
    // The two steps of the recursion put into one another, so that neither waits for the other:
    //   v + (target - d v - (x + c v)) c = v (1 - d c - c^2) + (target - x) c
    const double c = coefficient;
    const double kept = 1.0 - damping * c - c * c;
    double x = position;
    double v = velocity;
    for (int i = 0; i < count; ++i) {
        const double target = std::trunc(scale * times[i] + offset);
        const double next = x + c * v;
        v = v * kept + (target - x) * c;
        x = next;
        delays[i] = static_cast<float>(x);
    }
    position = x;
    velocity = v;
}
