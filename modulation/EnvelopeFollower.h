#pragma once

#include "wave/Filter.h"
#include "wave/FloatParameterSource.h"

/// The level of its input on a decibel scale: -60 dB and below are 0, 0 dB is 1, and what is louder lies
/// above
/// 1. It runs whether read or not, and its level stays across a reset. Thread: audio.
class EnvelopeFollower : public wave::Filter {
public:
    explicit EnvelopeFollower(wave::Environment& owner);

    FloatParameterBus attack;   // seconds to 90 % of a step up, 0.0005..10
    FloatParameterBus level;    // gain of the output, -2..2
    FloatParameterBus release;  // seconds to 90 % of a step down, 0.0005..10

protected:
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;

private:
    /// The coefficient of a one-pole follower for a time, worked out anew only when the time changes.
    class Coefficient {
    public:
        float at(float seconds, float sampleRate) noexcept REALTIME;

    private:
        float samples = 0.0f;  // the time for which the value stands
        float value = 0.0f;
    };

    void follow(const wave::Block& in, wave::Block& out, int count) noexcept REALTIME;

    Coefficient attackCoefficient;
    // In dB above -60 dB. Double: the last steps of a slow release would be lost in a float, and how the
    // blocks are cut would decide on them.
    double envelope = -180.0;
    Coefficient releaseCoefficient;
};
