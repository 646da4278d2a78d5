#include "modulation/ModulationSlotParameterSet.h"

#include "parameters/ParameterCurves.h"

namespace {

constexpr std::string_view bypassItems[] = {"Normal", "Bypassed"};
constexpr std::string_view invertItems[] = {"Normal", "Inverted"};

}  // namespace

void ModulationSlotParameterSet::SourceParameter::deliverTo(ModulationMatrix& matrix, int slotNumber,
                                                            int raw) noexcept
{
    matrix.setSlotSource(slotNumber, raw - 1);
}

void ModulationSlotParameterSet::TargetParameter::deliverTo(ModulationMatrix& matrix, int slotNumber,
                                                            int raw) noexcept
{
    matrix.setSlotTarget(slotNumber, raw - 1);
}

void ModulationSlotParameterSet::BypassParameter::deliverTo(ModulationMatrix& matrix, int slotNumber,
                                                            int raw) noexcept
{
    matrix.setSlotBypassed(slotNumber, raw != 0);
}

void ModulationSlotParameterSet::InvertParameter::deliverTo(ModulationMatrix& matrix, int slotNumber,
                                                            int raw) noexcept
{
    matrix.setSlotInverted(slotNumber, raw != 0);
}

ModulationSlotParameterSet::ModulationSlotParameterSet(GenericParameterOwner& owner,
                                                       const ModulationSlotParameters& shared, int slot)
    : PluginParameterSet(owner, "Slot " + std::to_string(slot + 1)),
      source(this, name() + " Source", shared.owner, slot),
      level(this, name() + " Level", shared.owner, shared.firstSlotTarget + slot),
      bypassed(this, name() + " Bypassed", shared.owner, slot),
      inverted(this, name() + " Inverted", shared.owner, slot),
      target(this, name() + " Target", shared.owner, slot),
      slots(shared)
{}

void ModulationSlotParameterSet::initialise()
{
    source.setItems(slots.sourceNames.names(), 0);
    source.helpText = "The signal that moves the target: an XY axis, an XLFO, an envelope or MIDI.";
    level.setRange(0.0f, 1.0f, 0.5f);
    level.setCurve(knobCurve);
    level.helpText = "How far the source moves the target.";
    bypassed.setItems(bypassItems, false);
    bypassed.helpText = "Takes the slot out for a while and keeps its settings.";
    inverted.setItems(invertItems, false);
    inverted.helpText = "Turns the movement upside down.";
    target.setItems(slots.targetNames.names(), 0);
    target.helpText = "The control that the source moves, which may be the level of another slot.";
}

ModulationSlotParameterSetList::ModulationSlotParameterSetList(GenericParameterOwner& owner,
                                                               const ModulationSlotParameters& shared,
                                                               int slotCount)
    : TargetParameterSetList<ModulationSlotParameterSet>(owner, "Slots", shared.owner, shared.firstSlotTarget,
                                                         1)
{
    for (int slot = 0; slot < slotCount; ++slot)
        addSet(std::make_unique<ModulationSlotParameterSet>(owner, shared, slot));
    numActive.setRange(0, slotCount, 0);
    numActive.helpText = "The number of modulation slots in use.";
}
