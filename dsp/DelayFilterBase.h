#pragma once

#include "dsp/Delay.h"
#include "wave/Filter.h"

namespace wave {

/// A delay as a component that may sit in a feedback loop: a pull answers from the past, without looking at
/// the input; the input is taken in the second pass, when the rest of the graph has run.
///
/// A sub-block that doesn't begin where the last one ended, or that comes after a reset, finds the delay
/// empty.
class DelayFilterBase : public FilterBase {
public:
    DelayFilterBase(Environment& owner, int longestDelay);

protected:
    void generate(Block* block, int count, int flags) noexcept REALTIME override;
    /// The ring was emptied between two sub-blocks.
    virtual void cleared() noexcept REALTIME {}

    Delay delay;

private:
    void beginBlock(int count) noexcept REALTIME;

    std::uint64_t nextBlockTime = 0;  // clock value at which the next sub-block follows without a gap
};

}  // namespace wave
