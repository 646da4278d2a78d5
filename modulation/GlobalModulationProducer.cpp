#include "modulation/GlobalModulationProducer.h"

#include <algorithm>

namespace {

/// out = level * source + in. `in` may be `out`.
void addProduct(const wave::Block& level, const wave::Block& source, const float* in, float* out,
                int count) noexcept
{
    const float* x = source.data();
    const float* g = level.data();
    if (level.isConstant()) {
        const float gain = g[0];
        for (int i = 0; i < count; ++i)
            out[i] = gain * x[i] + in[i];
        return;
    }
    for (int i = 0; i < count; ++i)
        out[i] = g[i] * x[i] + in[i];
}

/// Gets the slot's level for the whole block. False if it doesn't stand still. A level that no slot modulates
/// is asked where it is made, and no more until it moves: with many slots the memory touched counts.
bool isSteady(ModulationSlot& slot, int count, float& value) noexcept
{
    if (slot.levelRests) {
        value = slot.restingLevel;
        return true;
    }
    if (slot.plainLevel) {
        value = slot.restingLevel = slot.plainLevel->target();
        slot.levelRests = slot.plainLevel->rest(count);
        return slot.levelRests;
    }
    const wave::Block& level = slot.level->pull(count);
    value = level[0];
    return level.isConstant();
}

}  // namespace

void GlobalModulationProducer::generate(wave::Block* block, int count, int) noexcept
{
    if (!target.isModulated())
        return show(target.forwarder.pull(count));
    float sum = 0.0f;
    if (sumSteady(count, sum))
        steady.fill(*block, std::min(std::max(sum, target.lower()), target.upper()), count);
    else
        sumSamples(*block, count);
}

/// Gets the sum for the whole block. False if what it is made of doesn't stand still.
bool GlobalModulationProducer::sumSteady(int count, float& sum) noexcept
{
    if (!target.base.rest(count))
        return false;
    float total = target.base.target();
    for (ModulationSlot* slot = target.firstActive; slot; slot = slot->next) {
        const wave::Block& source = slot->signal->pull(count);
        float level = 0.0f;
        if (!source.isConstant() || !isSteady(*slot, count, level))
            return false;
        total += level * source[0];
    }
    sum = total;
    return true;
}

void GlobalModulationProducer::sumSamples(wave::Block& block, int count) noexcept
{
    float* out = block.data();
    const float* in = target.forwarder.pull(count).data();
    for (const ModulationSlot* slot = target.firstActive; slot; slot = slot->next) {
        addProduct(slot->level->pull(count), slot->signal->pull(count), in, out, count);
        in = out;
    }
    // Only here: two slots that pull apart may cancel although one alone would reach beyond the limits.
    const float lower = target.lower();
    const float upper = target.upper();
    for (int i = 0; i < count; ++i)
        out[i] = std::min(std::max(out[i], lower), upper);
    block.setConstant(false);
    steady.forget();
}
