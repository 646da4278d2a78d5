#include "dsp/FilterUnit.h"

#include <cmath>

FilterUnit::FilterUnit(wave::Environment& owner)
    : segmentLengths(static_cast<std::size_t>(owner.maxBlockSize()), 0), env(owner)
{}

void FilterUnit::beginBlock(int count) noexcept
{
    if (nextBlockTime == env.hardResetTime() || nextBlockTime != env.now())
        clear();
    nextBlockTime = env.now() + static_cast<std::uint64_t>(count);
}

int FilterUnit::segmentEnd(const FilterSignals& signals, int from, int limit) noexcept
{
    if (signals.allConstant)
        return limit;
    for (int i = from + 1; i < limit; ++i) {
        if (std::fabs(signals.frequency[i] - signals.frequency[from]) > 0.1f ||
            std::fabs(signals.peak[i] - signals.peak[from]) > 0.0002f)
            return i;
    }
    return limit;
}
