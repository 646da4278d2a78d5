#pragma once

#include "foundation/Realtime.h"

namespace wave {

/// Reading from the past of a signal. Sample `i` of a read is the signal as it was `delay` samples before
/// sample `i` of the present sub-block; what was never written reads as 0. Reads cannot fail. Thread: audio.
class AbstractDelay {
public:
    virtual ~AbstractDelay() = default;

    /// @param delay  whole samples
    virtual void read(int delay, float* out, int count) noexcept REALTIME = 0;
    /// Reads between the samples on a straight line.
    /// @param delays  `count` delays in samples, one per output sample; must not overlap `out`
    virtual void readLinear(const float* delays, float* out, int count) noexcept REALTIME = 0;
    /// Reads between the samples through a first-order all-pass, whose state the caller keeps.
    virtual void readAllpass(const float* delays, float* out, float* state, int count) noexcept REALTIME = 0;
};

}  // namespace wave
