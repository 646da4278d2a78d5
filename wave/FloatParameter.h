#pragma once

#include "foundation/ValueAssignable.h"
#include "wave/Producer.h"

/// A scalar value as a signal. A new value is reached on a linear ramp: a large step in `fastRampMs`, a tiny
/// one in `slowRampMs`. A parameter that nobody reads, or that was just reset, jumps. Thread: audio.
class FloatParameter : public wave::Component, public ValueAssignable<float> {
public:
    /// Asks `setValue` for the ramp that fits the step.
    static constexpr float automaticRamp = -1.0f;
    static constexpr float slowRampMs = 150.0f;
    static constexpr float fastRampMs = 20.0f;

    /// The range holds `initial`, 0 and 1 until `setRange` says otherwise.
    FloatParameter(wave::Environment& owner, float initial);

    /// A target outside the new range moves to its edge at once.
    /// @param newSpan  what a step is measured against; 0 or less for maximum - minimum
    void setRange(float newMinimum, float newMaximum, float newSpan = 0.0f) noexcept REALTIME;
    /// Above 0 the value is circular, and ramps take the short way round.
    void setWrapPeriod(float period) noexcept REALTIME { wrapPeriod = period; }

    /// For a parameter whose owner reads it in every sub-block and wants its ramps whatever is reset
    /// meanwhile.
    void setFreeRunning() noexcept REALTIME { freeRunning = true; }

    /// Sets the target, clamped to the range. A change of no more than the float epsilon is dropped.
    /// @param rampMs  0 jumps, a positive time ramps, a negative one (automaticRamp) lets the parameter
    /// choose
    void setValue(float value, float rampMs) noexcept REALTIME;
    void assign(float value) noexcept REALTIME override { setValue(value, automaticRamp); }

    /// The signal of this sub-block. For a reader that comes by in every block; time that went by unread is
    /// skipped.
    wave::Block& render(int count) noexcept REALTIME;
    /// Lets `count` samples pass, if the signal rests at its target all the while: for a reader that needn't
    /// have a block of it. False if a ramp runs; nothing has passed then, and `render` is due. May come more
    /// than once in a sub-block, also along with `render`.
    bool rest(int count) noexcept REALTIME
    {
        if (rampPosition < rampLength)
            return false;
        clock = environment.now() + static_cast<std::uint64_t>(count);
        return true;
    }
    /// The step inside `render`, for a caller that has accounted for the time itself.
    wave::Block& renderContinuing(int count) noexcept REALTIME;

    /// Ends a ramp at its target, at once.
    void finishRamp() noexcept REALTIME;

    float target() const noexcept REALTIME { return targetValue; }
    float lower() const noexcept REALTIME { return minimum; }
    float upper() const noexcept REALTIME { return maximum; }

private:
    bool isStale() const noexcept REALTIME;
    void turnTheShortWay(float from, float to) noexcept REALTIME;
    float automaticRampMs(float delta) const noexcept REALTIME;

    // First what a signal at rest is asked for, in one cache line: most signals rest, and there are many.
    wave::Environment& environment;
    std::uint64_t clock = 0;  // time up to which the signal has been rendered
    int rampPosition = 0;     // samples
    int rampLength = 0;       // samples
    float targetValue;
    float minimum;
    float maximum;
    bool freeRunning = false;
    int filled = 0;  // samples of `block` that hold the target, while no ramp runs
    wave::Block block;
    float wrapPeriod = 0.0f;
    float rampStart;
    float rampStep = 0.0f;  // per sample
    float span;
};
