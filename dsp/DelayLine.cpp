#include "dsp/DelayLine.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float longestDelayMs = 5000.0f;
constexpr float typeFadeMs = 20.0f;

}  // namespace

DelayLine::DelayLine(wave::Environment& owner)
    : DelayLineBase(owner, longestDelayMs),
      delayTime(owner, 0.0f),
      interpretation(DelayInterpretation::Milliseconds, this),
      readType(ReadType::Tape, this),
      smoothing(true, this),
      smoother(owner),
      stretch(owner, *this),
      fadingBlock(owner)
{
    registerForReset();
    runAlways(0);
    reset();
}

void DelayLine::reset() noexcept
{
    DelayLineBase::reset();
    const bool inMs = interpretation.value() == DelayInterpretation::Milliseconds;
    delayTime.parameter().setRange(0.0f, inMs ? maxDelayMs() : static_cast<float>(maxDelaySamples()));
    smoother.reset();
    stretch.reset();
    allpassState = 0.0f;
    moving = false;
    activeType = readType.value();
    fadePosition = fadeLength = static_cast<int>(environment().sampleRate() * typeFadeMs * 0.001f);
    delay.clear();
}

void DelayLine::propertyChanged(AbstractProperty& property)
{
    if (&property == &interpretation)
        reset();
}

void DelayLine::cleared() noexcept
{
    // There is nothing in the ring to glide over: the line starts at its time.
    smoother.reset();
    stretch.reset();
    fadePosition = fadeLength;
    moving = false;
}

void DelayLine::filter(wave::Block*, wave::Block* out, int count, int) noexcept
{
    const wave::Block& time = delayTime.pull(count);
    const int delaySamples = wholeSamples(time[0]);
    out->setConstant(false);
    followReadType();
    if (activeType == ReadType::Crossfade) {
        readCrossfading(delaySamples, out->data(), count);
        return;
    }
    if (time.isConstant() && isSettled(delaySamples)) {
        if (smoother.isFresh())
            smoother.start(delaySamples);
        moving = false;
        read(delaySamples, out->data(), count);
        return;
    }
    moving = true;
    buildDelays(time, count);
    readMoving(activeType, out->data(), count);
    if (fadePosition < fadeLength)
        fadeFromOldType(out->data(), count);
}

float DelayLine::samplesPerUnit() const noexcept
{
    return interpretation.value() == DelayInterpretation::Milliseconds ? environment().sampleRate() * 0.001f
                                                                       : 1.0f;
}

int DelayLine::wholeSamples(float time) const noexcept
{
    if (interpretation.value() == DelayInterpretation::Milliseconds)
        return static_cast<int>(time * samplesPerUnit());
    return static_cast<int>(time + std::copysign(0.5f, time));
}

bool DelayLine::isSettled(int delaySamples) const noexcept
{
    if (fadePosition < fadeLength)
        return false;
    if (smoothing.value() && !smoother.isFresh() && !smoother.isAt(delaySamples))
        return false;
    // Heads that stand a sample off, as they do when the time comes from below, first fade to the right
    // place.
    return activeType != ReadType::Stretch || stretch.isSettledAt(delaySamples);
}

void DelayLine::followReadType() noexcept
{
    const ReadType wanted = readType.value();
    if (wanted == activeType || fadePosition < fadeLength)
        return;
    if (moving && wanted != ReadType::Crossfade && activeType != ReadType::Crossfade) {
        fadingType = activeType;
        fadePosition = 0;
    }
    activeType = wanted;
    if (wanted == ReadType::Stretch)
        stretch.reset();
}

void DelayLine::buildDelays(const wave::Block& time, int count) noexcept
{
    const float scale = samplesPerUnit();
    if (smoothing.value()) {
        const float rounding = interpretation.value() == DelayInterpretation::Samples ? 0.5f : 0.0f;
        smoother.chase(time.data(), scale, rounding, scratch.data(), count);
        return;
    }
    for (int i = 0; i < count; ++i)
        scratch[i] = time[i] * scale;
}

void DelayLine::readMoving(ReadType type, float* out, int count) noexcept
{
    if (type == ReadType::Stretch)
        stretch.read(scratch.data(), out, count);
    else if (type == ReadType::Allpass)
        readAllpass(scratch.data(), out, &allpassState, count);
    else
        readLinear(scratch.data(), out, count);
}

void DelayLine::fadeFromOldType(float* out, int count) noexcept
{
    readMoving(fadingType, fadingBlock.data(), count);
    const float step = 1.0f / static_cast<float>(fadeLength);
    const int fading = std::min(fadeLength - fadePosition, count);
    for (int i = 0; i < fading; ++i) {
        const float gain = static_cast<float>(fadePosition + i) * step;
        out[i] = fadingBlock[i] + (out[i] - fadingBlock[i]) * gain;
    }
    fadePosition += fading;
}
