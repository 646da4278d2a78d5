#include "product/DelayTimeController.h"

#include "foundation/Tolerance.h"

#include <algorithm>

namespace {

constexpr float shortestMs = 5.0f;
constexpr float longestMs = 5000.0f;

/// Milliseconds at one beat per minute.
float noteLength(DelaySync sync) noexcept
{
    switch (sync) {
    case DelaySync::Free:
        break;
    case DelaySync::TwoNotes:
        return 120000.0f;
    case DelaySync::Note:
        return 60000.0f;
    case DelaySync::HalfNote:
        return 30000.0f;
    case DelaySync::QuarterNote:
        return 15000.0f;
    }
    return 0.0f;
}

}  // namespace

DelayTimeController::DelayTimeController(wave::Environment& owner, wave::Producer& timeSignal,
                                         wave::Producer& offsetSignal)
    : Producer(owner),
      sync(DelaySync::Free, this),
      syncTime(owner, shortestMs),
      time(timeSignal),
      offset(offsetSignal)
{
    syncTime.parameter.setRange(shortestMs, longestMs);
}

void DelayTimeController::tempoChanged(float newTempo) noexcept
{
    tempo = newTempo;
    updateSyncTime();
}

// A new note length counts from the sample where it was chosen, with the tempo that is known.
void DelayTimeController::propertyChanged(AbstractProperty&) { updateSyncTime(); }

void DelayTimeController::updateSyncTime() noexcept
{
    if (sync.value() != DelaySync::Free && !isNear(tempo, 0.0f))
        syncTime.assign(noteLength(sync.value()) / tempo);
}

void DelayTimeController::generate(wave::Block* block, int count, int) noexcept
{
    if (sync.value() == DelaySync::Free) {
        show(time.pull(count));
        return;
    }
    const wave::Block& factor = offset.pull(count);
    const wave::Block& length = syncTime.pull(count);
    for (int i = 0; i < count; ++i)
        (*block)[i] = std::clamp(length[i] * factor[i], shortestMs, longestMs);
    block->setConstant(factor.isConstant() && length.isConstant());
}
