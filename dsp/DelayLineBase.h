#pragma once

#include "dsp/DelayFilterBase.h"

/// One channel of delay with the reads of `AbstractDelay` on its ring.
class DelayLineBase : public wave::DelayFilterBase, public wave::AbstractDelay {
public:
    DelayLineBase(wave::Environment& owner, float longestMs);

    void read(int delaySamples, float* out, int count) noexcept REALTIME override;
    void readLinear(const float* delays, float* out, int count) noexcept REALTIME override;
    void readAllpass(const float* delays, float* out, float* state, int count) noexcept REALTIME override;

    /// Sets the longest delay in milliseconds and resets. Thread: main.
    virtual void setMaxDelay(float ms);
    float maxDelayMs() const noexcept REALTIME { return longestMs; }
    int maxDelaySamples() const noexcept REALTIME { return delay.maxDelay(); }

    void reset() noexcept REALTIME override;

protected:
    /// Reads at a whole delay; a change of it fades over to the new place in 200 ms. A change during a fade
    /// waits.
    void readCrossfading(int delaySamples, float* out, int count) noexcept REALTIME;

    wave::Block scratch;

private:
    void fadeFromOldPlace(float* out, int count) noexcept REALTIME;

    int crossfadeFrom = -1;     // samples
    int crossfadeTo = -1;       // samples
    int crossfadePosition = 0;  // samples
    int crossfadeLength = 0;    // samples
    bool crossfadeFresh = true;
    float longestMs;
};
