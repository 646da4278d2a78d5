#include "dsp/DelayLineBase.h"

#include <algorithm>

DelayLineBase::DelayLineBase(wave::Environment& owner, float longest)
    : DelayFilterBase(owner, static_cast<int>(owner.sampleRate() * (longest * 0.001))),
      scratch(owner),
      longestMs(longest)
{}

void DelayLineBase::read(int delaySamples, float* out, int count) noexcept
{
    delay.read(delaySamples, out, count);
}

void DelayLineBase::readLinear(const float* delays, float* out, int count) noexcept
{
    delay.readLinear(delays, out, count);
}

void DelayLineBase::readAllpass(const float* delays, float* out, float* state, int count) noexcept
{
    delay.readAllpass(delays, out, state, count);
}

void DelayLineBase::setMaxDelay(float ms)
{
    longestMs = ms;
    reset();
}

void DelayLineBase::reset() noexcept
{
    // Takes new memory only when the sample rate changed, and then the engine is at rest.
    delay.setMaxDelay(static_cast<int>(environment().sampleRate() * (longestMs * 0.001)));
    crossfadeFresh = true;
}

void DelayLineBase::readCrossfading(int delaySamples, float* out, int count) noexcept
{
    if (crossfadeFresh) {
        crossfadeTo = delaySamples;
        crossfadePosition = crossfadeLength;
        crossfadeFresh = false;
    } else if (crossfadePosition == crossfadeLength && delaySamples != crossfadeTo) {
        crossfadePosition = 0;
        crossfadeLength = static_cast<int>(environment().sampleRate() * 0.2);
        crossfadeFrom = crossfadeTo;
        crossfadeTo = delaySamples;
    }
    read(crossfadeTo, out, count);
    if (crossfadePosition < crossfadeLength)
        fadeFromOldPlace(out, count);
}

void DelayLineBase::fadeFromOldPlace(float* out, int count) noexcept
{
    const float* old = scratch.data();
    read(crossfadeFrom, scratch.data(), count);
    const double step = 1.0 / crossfadeLength;
    double gain = crossfadePosition * step;
    const int fading = std::min(crossfadeLength - crossfadePosition, count);
    for (int i = 0; i < fading; ++i) {
        out[i] = static_cast<float>(old[i] * (1.0 - gain) + out[i] * gain);
        gain += step;
    }
    crossfadePosition += fading;
}
