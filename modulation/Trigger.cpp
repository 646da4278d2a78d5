#include "modulation/Trigger.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace {

bool isAbove(float level, float limit) noexcept { return level > limit + signalEpsilon; }

/// Also of what is no number.
bool isDown(float level, float limit) noexcept { return !(level >= limit * 0.5f + signalEpsilon); }

/// Without a way out, for the sake of vectors.
bool anyAbove(const wave::Block& levels, const wave::Block& limits, int count) noexcept
{
    int found = 0;
    for (int i = 0; i < count; ++i)
        found |= isAbove(levels[i], limits[i]) ? 1 : 0;
    return found != 0;
}

/// For how many samples the level has stayed down where the block ends.
int countDownAtEnd(const wave::Block& levels, const wave::Block& limits, int count) noexcept
{
    int down = 0;
    while (down < count && isDown(levels[count - 1 - down], limits[count - 1 - down]))
        ++down;
    return down;
}

}  // namespace

Trigger::Trigger(wave::Environment& owner) : threshold(owner, 0.9f), environment(owner)
{
    threshold.parameter().setRange(0.0f, 1.0f);
    found.reserve(1024);  // far more than a block has samples
    Trigger::propertyChanged(holdMs);
}

void Trigger::propertyChanged(AbstractProperty& property)
{
    if (&property == &holdMs) {
        holdSamples = std::max(static_cast<int>(environment.sampleRate() * 0.001f * holdMs.value()), 1);
    } else if (domain.value() == GainChangeDomain::Decibels) {
        thresholdGain = std::make_unique<wave::Block>(environment);
        threshold.parameter().setRange(-180.0f, 0.0f);
    } else {
        thresholdGain.reset();
        threshold.parameter().setRange(0.0f, 1.0f);
    }
}

void Trigger::run(int count) noexcept
{
    if (lastGeneration == environment.generationNumber())
        return;
    found.clear();
    if (!input || !enabled.value())
        return;
    const wave::Block& levels = input->pull(count);
    const wave::Block& limits = thresholds(count);
    lastGeneration = environment.generationNumber();
    // Most blocks bring nothing new: nothing rises, or there is no time to stay down for long enough.
    if (active && belowCount + count <= holdSamples) {
        const int down = countDownAtEnd(levels, limits, count);
        belowCount = down == count ? belowCount + count : down;
        return;
    }
    if (!active && !anyAbove(levels, limits, count))
        return;
    for (int i = 0; i < count; ++i)
        look(levels[i], limits[i], i);
}

const wave::Block& Trigger::thresholds(int count) noexcept
{
    const wave::Block& signal = threshold.pull(count);
    if (!thresholdGain)
        return signal;
    constexpr float nepersPerDb = 0.1151292546497023f;
    if (signal.isConstant()) {
        thresholdGain->fill(std::exp(signal[0] * nepersPerDb), count);
        return *thresholdGain;
    }
    for (int i = 0; i < count; ++i)
        (*thresholdGain)[i] = std::exp(signal[i] * nepersPerDb);
    return *thresholdGain;
}

void Trigger::look(float level, float limit, int position) noexcept
{
    if (!active) {
        if (!isAbove(level, limit))
            return;
        active = true;
        belowCount = 0;
        found.push_back({EventKind::Start, position});
    } else if (!isDown(level, limit)) {
        belowCount = 0;
    } else if (++belowCount > holdSamples) {
        active = false;
        belowCount = 0;
        found.push_back({EventKind::End, position});
    }
}
