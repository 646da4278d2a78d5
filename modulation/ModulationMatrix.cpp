#include "modulation/ModulationMatrix.h"

#include "modulation/GlobalModulationProducer.h"
#include "modulation/InternalController.h"

#include <algorithm>
#include <cmath>

ModulationMatrix::Target::Target(wave::Environment& environment, const ModulationRange& targetRange,
                                 int slotCount)
    : range(targetRange), base(environment, 0.0f), forwarder(environment, base)
{
    slots.reserve(static_cast<std::size_t>(slotCount));
    updateLimits();
}

void ModulationMatrix::Target::setParameterSignal(float signal) noexcept
{
    if (levelOf)
        levelOf->wakeLevel();
    lastSignal = signal;
    base.setValue(signal * signalScale, FloatParameter::automaticRamp);
    if (changeListener)
        changeListener->baseValueChanged();
}

void ModulationMatrix::Target::setScale(float newScale) noexcept
{
    if (levelOf)
        levelOf->wakeLevel();
    signalScale = newScale;
    updateLimits();
    // A ramp that runs in the units of the old scale must not go on in those of the new one.
    base.finishRamp();
    base.setValue(lastSignal * signalScale, 0.0f);
    if (changeListener)
        changeListener->baseValueChanged();
}

void ModulationMatrix::Target::updateLimits() noexcept
{
    const auto [low, high] = std::minmax({signalScale * range.lower, signalScale * range.upper});
    const float magnitude = std::fabs(signalScale);
    base.setRange(low, high, magnitude * range.span);
    base.setWrapPeriod(magnitude * range.wrapPeriod);
}

void ModulationMatrix::Target::slotsChanged() noexcept
{
    ModulationSlot** link = &firstActive;
    for (ModulationSlot* slot : slots) {
        if (!slot->isActive())
            continue;
        *link = slot;
        link = &slot->next;
    }
    *link = nullptr;
}

ModulationMatrix::ModulationMatrix(wave::Environment& environment,
                                   ModulationConfiguration& modulationConfiguration)
    : configuration(modulationConfiguration),
      sources(configuration.sources.size(), nullptr),
      internalController(std::make_unique<InternalController>(configuration, *this))
{
    const int count = configuration.targetCount();
    targets.reserve(static_cast<std::size_t>(count));
    producers.reserve(static_cast<std::size_t>(count));
    for (int id = 0; id < count; ++id) {
        targets.push_back(
            std::make_unique<Target>(environment, configuration.rangeOf(id), configuration.slotCount));
        producers.push_back(std::make_unique<GlobalModulationProducer>(environment, target(id)));
    }
    slots.reserve(static_cast<std::size_t>(configuration.slotCount));
    for (int index = 0; index < configuration.slotCount; ++index) {
        const int level = configuration.firstSlotTarget + index;
        slots.emplace_back(index, level, *producerForTarget(level), target(level).base);
        target(level).levelOf = &slots.back();  // which stays: there is room for all
    }
}

ModulationMatrix::~ModulationMatrix() = default;

wave::Producer* ModulationMatrix::producerForTarget(int id) noexcept
{
    return producers[static_cast<std::size_t>(id)].get();
}

ModulationMatrix::Controller& ModulationMatrix::controller() noexcept { return *internalController; }

void ModulationMatrix::setSource(int source, wave::Producer* producer)
{
    sources[static_cast<std::size_t>(source)] = producer;
}

void ModulationMatrix::setSourceKind(int source, ModulationSource::Kind kind) noexcept
{
    configuration.sources[static_cast<std::size_t>(source)].kind = kind;
    for (const ModulationSlot& one : slots)
        if (one.source == source)
            refreshSlot(one);
}

// What slots are told.

void ModulationMatrix::setSlotSource(int index, int source) noexcept
{
    ModulationSlot& changed = slotAt(index);
    if (changed.source == source)
        return;
    changed.source = source;
    updateSlot(changed);
    reviveSlots(changed);
}

void ModulationMatrix::setSlotTarget(int index, int newTarget) noexcept
{
    ModulationSlot& changed = slotAt(index);
    if (changed.target == newTarget)
        return;
    if (changed.target >= 0) {
        std::erase(target(changed.target).slots, &changed);
        slotsChanged(changed.target);
    }
    changed.target = newTarget;
    if (newTarget >= 0) {
        target(newTarget).slots.push_back(&changed);  // within what the target reserved
        slotsChanged(newTarget);
    }
    updateSlot(changed);
    reviveSlots(changed);
}

void ModulationMatrix::setSlotBypassed(int index, bool bypassed) noexcept
{
    ModulationSlot& changed = slotAt(index);
    if (changed.bypassed == bypassed)
        return;
    changed.bypassed = bypassed;
    updateSlot(changed);
}

void ModulationMatrix::setSlotInverted(int index, bool inverted) noexcept
{
    ModulationSlot& changed = slotAt(index);
    if (changed.inverted == inverted)
        return;
    changed.inverted = inverted;
    refreshSlot(changed);
}

void ModulationMatrix::setSlotLevel(int index, float level) noexcept
{
    target(slotAt(index).levelTarget).setParameterSignal(level);
}

// What follows from it.

/// A level that no slot points at is read where it is made.
void ModulationMatrix::slotsChanged(int changedTarget) noexcept
{
    target(changedTarget).slotsChanged();
    const int owner = changedTarget - configuration.firstSlotTarget;
    if (owner < 0 || owner >= slotCount())
        return;
    Target& level = target(changedTarget);
    slotAt(owner).wakeLevel();
    slotAt(owner).plainLevel = level.slots.empty() ? &level.base : nullptr;
}

void ModulationMatrix::updateSlot(ModulationSlot& updated) noexcept
{
    updated.signal = internalController->isValid(updated.index)
                         ? sources[static_cast<std::size_t>(updated.source)]
                         : nullptr;
    if (updated.target >= 0)
        target(updated.target).slotsChanged();
    refreshSlot(updated);
}

/// Gives the slot's level the depth that the slot has on its target, and then the levels that hang on it: a
/// slot on a level works in the units of that level.
void ModulationMatrix::refreshSlot(const ModulationSlot& refreshed) noexcept
{
    if (!refreshed.isActive())
        return;
    const ModulationSource& source = configuration.sources[static_cast<std::size_t>(refreshed.source)];
    const float depth = target(refreshed.target).depthFor(source.kind);
    Target& level = target(refreshed.levelTarget);
    level.setScale(refreshed.inverted ? -depth : depth);
    for (const ModulationSlot* onLevel : level.slots)
        refreshSlot(*onLevel);
}

/// The change may have broken the circle that held another slot off.
void ModulationMatrix::reviveSlots(const ModulationSlot& changed) noexcept
{
    for (ModulationSlot& other : slots)
        if (&other != &changed && !other.isActive() && (other.source >= 0 || other.target >= 0))
            updateSlot(other);
}
