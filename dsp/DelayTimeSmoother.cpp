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
    double x = position;
    double v = velocity;
    for (int i = 0; i < count; ++i) {
        const float target = std::trunc(scale * times[i] + offset);
        x += coefficient * v;
        delays[i] = static_cast<float>(x);
        v += (target - damping * v - x) * coefficient;
    }
    position = x;
    velocity = v;
}
