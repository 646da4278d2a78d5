#pragma once

#include "dsp/AbstractDelay.h"
#include "wave/Environment.h"
#include "wave/Producer.h"

namespace wave {

/// A ring of samples, as long as a power of two:
///
///     0            filled = writeIndex                ring length
///     | w w w w w w | 0 . . . . . . . . . . . . . . . . |      while it fills for the first time
///     | n n n n n n | o o o o o o o o o o o o o o o o o |      later: n new, o old
///
/// Places at or above `filled` hold leftovers from before the last clear, except the first one, which is kept
/// 0 for reads between the samples.
class Delay : public Component, public AbstractDelay, private MemoryStream {
public:
    /// @param longestDelay  samples
    Delay(Environment& owner, int longestDelay);
    ~Delay() override;

    /// Makes the ring long enough; a new length clears it. Thread: main, or audio where nothing changes.
    void setMaxDelay(int samples);
    int maxDelay() const noexcept REALTIME { return longest; }
    int ringLength() const noexcept REALTIME { return ring.size(); }

    /// Forgets everything, without touching the memory.
    void clear() noexcept REALTIME;
    /// Appends `count` samples. What isn't a number becomes 0 and what is beyond `ceiling` is held there, so
    /// that a loop that runs away stays finite.
    void write(const float* samples, int count) noexcept REALTIME;

    /// Where reads count from. `count` samples of the present block are still to come; 0 once it has been
    /// written.
    void setUnwritten(int count) noexcept REALTIME { readBase = ring.size() + count; }

    void read(int delay, float* out, int count) noexcept REALTIME override;
    void readLinear(const float* delays, float* out, int count) noexcept REALTIME override;
    void readAllpass(const float* delays, float* out, float* state, int count) noexcept REALTIME override;

    static constexpr float ceiling = 1e6f;  // +120 dBFS

private:
    void fetchAhead() const noexcept REALTIME override;
    void fetch(int place) const noexcept REALTIME;
    static int lengthFor(const Environment& environment, int longestDelay);
    void storeFinite(const float* samples, int place, int count) noexcept REALTIME;

    Environment& environment;
    int longest;
    AlignedBuffer ring;
    int mask;
    int filled = 0;  // samples written since the last clear, up to the ring's length and a block
    int readBase;    // added to `writeIndex`: one past the newest sample that reads may see
    int writeIndex = 0;
    int readPlace = 0;  // about where the next read will begin
};

}  // namespace wave
