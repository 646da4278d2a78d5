#include "dsp/SignalSmoother.h"

#include "dsp/SmoothingCoefficient.h"

#include <algorithm>
#include <cmath>

namespace {

/// Within this distance of a constant input the smoother counts as settled: -80 dB.
constexpr double settledDistance = 0.0001;

}  // namespace

SignalSmoother::SignalSmoother(wave::Environment& owner)
    : Filter(owner), frequency(5.0f, this), method(SmoothMethod::Copy, this), startFromInput(false, this)
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
    double x = position;
    double v = velocity;
    for (int i = 0; i < count; ++i) {
        const float target = samples[i];
        x += coefficient * v;
        samples[i] = static_cast<float>(x);
        v += (target - 2.0 * v - x) * coefficient;
    }
    position = x;
    velocity = v;
}
