#pragma once

#include "wave/Environment.h"

/// Chases a delay time as the motor of a tape would: a critically damped two-pole low-pass of 5 Hz on the
/// delay in samples, aiming at whole samples. Thread: audio.
class DelayTimeSmoother {
public:
    explicit DelayTimeSmoother(wave::Environment& owner) : environment(owner) { reset(); }

    /// Forgets the position; the next target is taken without a glide.
    void reset() noexcept REALTIME;
    bool isFresh() const noexcept REALTIME { return fresh; }
    /// Stands still at `delay` samples.
    void start(double delay) noexcept REALTIME;
    /// Nearer to `delay` samples than a listener can tell.
    bool isAt(int delay) const noexcept REALTIME;

    /// @param times   `count` delay times in any unit
    /// @param scale   samples per unit
    /// @param offset  added before the target is cut to whole samples, 0 or 0.5
    /// @param delays  receives `count` delays in samples
    void chase(const float* times, float scale, float offset, float* delays, int count) noexcept REALTIME;

private:
    static constexpr float frequency = 5.0f;  // Hz
    static constexpr float damping = 2.0f;

    wave::Environment& environment;
    float coefficient = 0.0f;
    bool fresh = true;
    // Double: steps of a slow glide over hundreds of thousands of samples would be lost in a float.
    double velocity = 0.0;
    double position = 0.0;  // samples
};
