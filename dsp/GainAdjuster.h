#pragma once

#include "wave/Filter.h"
#include "wave/FloatParameter.h"

/// The gain of a feedback loop: a ramped gain, and a hold on filters that raise the level. Where both levels
/// are wired each sample is also scaled by delayLevel / filterLevel, within 0.1 to 1. Thread: audio.
class GainAdjuster : public wave::Filter {
public:
    explicit GainAdjuster(wave::Environment& owner);

    FloatParameter gain;  // -1..1
    // Smoothed levels before and behind the filter; both or neither are wired.
    wave::Producer* filterLevel = nullptr;
    wave::Producer* delayLevel = nullptr;

protected:
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;

private:
    void holdLevel(const wave::Block& in, const wave::Block& gains, wave::Block& out,
                   int count) noexcept REALTIME;
};
