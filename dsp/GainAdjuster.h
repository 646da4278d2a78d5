#pragma once

#include "wave/Filter.h"
#include "wave/FloatParameter.h"

/// The gain of a feedback loop: a ramped gain, and a hold on filters that raise the level. Where both levels
/// are wired each sample is also scaled by delayLevel / filterLevel, within 0.1 to 1. Thread: audio.
class GainAdjuster : public wave::Filter {
public:
    /// What keeps the loop from growing beyond what went in.
    enum class Guard {
        FilterClips,  // nothing here: the filter's clipper bounds it
        LetSing,      // a clean filter beside one that may sing by itself: full scale may always pass
        Strict,       // clean filters alone: a sample never exceeds the recent peak before the filter
    };

    explicit GainAdjuster(wave::Environment& owner);

    void reset() noexcept REALTIME override;
    void setGuard(Guard newGuard) noexcept REALTIME { guard = newGuard; }

    FloatParameter gain;  // -1..1
    // Smoothed levels before and behind the filter; both or neither are wired.
    wave::Producer* filterLevel = nullptr;
    wave::Producer* delayLevel = nullptr;
    // What the filter filters. Where the input is this very signal, because the filter is off, there is
    // nothing to hold, and the levels aren't followed.
    wave::Producer* unfiltered = nullptr;

protected:
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;

private:
    bool isBypassed(const wave::Block& in, int count) noexcept REALTIME;
    void holdLevel(const wave::Block& in, const wave::Block& gains, wave::Block& out,
                   int count) noexcept REALTIME;

    void guardPeaks(wave::Block& out, int count) noexcept REALTIME;

    Guard guard = Guard::FilterClips;
    // Falling by 1/e in two seconds, which is many times round most loops.
    float peakBefore = 0.0f;
    float peakBehind = 0.0f;
    bool holding = false;  // the levels haven't met again since the filter was on
};
