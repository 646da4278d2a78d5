#pragma once

#include "dsp/AbstractDelay.h"
#include "wave/Environment.h"

/// Reads a delay whose time changes without changing the pitch: two heads stand at whole-sample delays; while
/// one fades out, the other has been put where the delay time was when the fade began. A fade takes 85 ms.
/// Thread: audio.
class StretchReader {
public:
    StretchReader(wave::Environment& owner, wave::AbstractDelay& readLine);

    void reset() noexcept REALTIME;
    /// True if both heads stand at `delay` samples, or haven't been placed.
    bool isSettledAt(int delay) const noexcept REALTIME;
    /// @param delays  where the time stands, in samples; the first one serves the whole block
    void read(const float* delays, float* out, int count) noexcept REALTIME;

private:
    void readHead(int index, int count) noexcept REALTIME;
    void startFade(int target, int count) noexcept REALTIME;
    void mix(float* out, int from, int count) noexcept REALTIME;

    wave::Environment& environment;
    wave::AbstractDelay& line;
    float inverseLength = 1.0f;
    int length = 1;                // of a fade, in samples
    int position = 0;              // in the fade, in samples
    int head = -1;                 // the one that fades out; -1 before the first read
    int headDelays[2] = {-1, -1};  // samples; -1 not placed
};
