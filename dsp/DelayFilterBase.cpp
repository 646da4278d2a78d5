#include "dsp/DelayFilterBase.h"

namespace wave {

DelayFilterBase::DelayFilterBase(Environment& owner, int longestDelay)
    : FilterBase(owner, OwnBlock::Passing), delay(owner, longestDelay)
{}

void DelayFilterBase::generate(Block* block, int count, int flags) noexcept
{
    const bool takesInput = flags == Environment::SecondPass;
    // A line that nobody read still reads itself, so that its time goes on and what it holds isn't lost.
    if (!takesInput || !isComputed()) {
        beginBlock(count);
        filter(nullptr, block, count, flags);
        show(*block);
    }
    if (takesInput && input)
        delay.write(input->pull(count).data(), count);
}

void DelayFilterBase::beginBlock(int count) noexcept
{
    const std::uint64_t expected = nextBlockTime;
    nextBlockTime = environment().now() + static_cast<std::uint64_t>(count);
    if (expected == environment().hardResetTime() || expected != environment().now()) {
        delay.clear();
        cleared();
    }
    delay.setUnwritten(count);
}

}  // namespace wave
