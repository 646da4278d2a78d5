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
    const float frequency = signals.frequency[from];
    const float peak = signals.peak[from];
    const auto moved = [&](int i) {
        const int frequencyMoved = std::fabs(signals.frequency[i] - frequency) > 0.1f;
        const int peakMoved = std::fabs(signals.peak[i] - peak) > 0.0002f;
        return frequencyMoved | peakMoved;
    };
    // Most segments are ended by their limit: that is found out without a way out, for the sake of vectors.
    int any = 0;
    for (int i = from + 1; i < limit; ++i)
        any |= moved(i);
    int end = any == 0 ? limit : from + 1;
    while (end < limit && moved(end) == 0)
        ++end;
    return end;
}
