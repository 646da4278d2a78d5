#include "dsp/SignalSmoother.h"

#include "dsp/SmoothingCoefficient.h"

#include <algorithm>
#include <cmath>

namespace {

/// Within this distance of a constant input the smoother counts as settled: -80 dB.
constexpr double settledDistance = 0.0001;

}  // namespace

SignalSmoother::SignalSmoother(wave::Environment& owner)
    : Filter(owner, OwnBlock::Passing),
      frequency(5.0f, this),
      method(SmoothMethod::Copy, this),
      startFromInput(false, this)
{
    registerForReset();
    reset();
}

void SignalSmoother::reset() noexcept
{
    coefficient = smoothingCoefficient(frequency.value(), environment().sampleRate());
    fresh = true;
}

void SignalSmoother::propertyChanged(AbstractProperty& property)
{
    if (&property == &frequency)
        coefficient = smoothingCoefficient(frequency.value(), environment().sampleRate());
}

void SignalSmoother::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    float* samples = out->data();
    if (method.value() == SmoothMethod::Rectify)
        std::transform(in->data(), in->data() + count, samples, [](float x) { return std::fabs(x); });
    else
        std::copy_n(in->data(), count, samples);
    if (fresh) {
        fresh = false;
        velocity = 0.0;
        position = startFromInput.value() ? samples[0] : 0.0;
    }
    if (in->isConstant() && std::fabs(position - samples[0]) <= settledDistance) {
        // A rectified negative constant isn't the input's own block.
        if (samples[0] == (*in)[0])
            show(*in);
        else
            out->setConstant(true);
        return;
    }
    smooth(samples, count);
}

void SignalSmoother::smooth(float* samples, int count) noexcept
{
    // The two steps of the recursion put into one another, so that neither waits for the other:
    //   v + (target - 2 v - (x + c v)) c = v (1 - 2 c - c^2) + (target - x) c
    const double c = coefficient;
    const double kept = 1.0 - 2.0 * c - c * c;
    double x = position;
    double v = velocity;
    for (int i = 0; i < count; ++i) {
        const double target = samples[i];
        const double next = x + c * v;
        v = v * kept + (target - x) * c;
        x = next;
        samples[i] = static_cast<float>(x);
    }
    position = x;
    velocity = v;
}
