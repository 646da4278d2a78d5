#pragma once

#include "wave/Filter.h"

/// Tells whether a signal is there: 1 from the threshold on, falling to 0 below it in proportion, behind a
/// one-pole follower. Its input is a level, never negative. Thread: audio.
class FilterAnalyzer : public wave::Filter {
public:
    /// @param timeMs          time constant of the follower, above 0
    /// @param levelThreshold  linear, above 0
    FilterAnalyzer(wave::Environment& owner, float timeMs, float levelThreshold);

    void reset() noexcept REALTIME override { state = 0.0f; }

protected:
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;

private:
    float time;
    float threshold;
    float state = 0.0f;
};
