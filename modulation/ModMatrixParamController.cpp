#include "modulation/ModMatrixParamController.h"

namespace {

/// Sets a parameter to a raw value.
template <class T>
void setRaw(IndexedPluginParameter<T>& parameter, int raw)
{
    parameter.setValue(static_cast<float>(parameter.format.positionOfRaw(raw)), announceChange);
}

}  // namespace

ModMatrixParamController::ModMatrixParamController(const ModulationConfiguration& modulationConfiguration,
                                                   ModulationSlotParameterSetList& slotList)
    : Controller(modulationConfiguration), slots(slotList)
{
    const ModulationTargetParameter& anyLevel = slots[0].level;
    defaultLevel.assign(anyLevel.valueToSignal(anyLevel.defaultValue()));
}

void ModMatrixParamController::beginChanges() { slots.numActive.owner()->beginChange(); }

void ModMatrixParamController::endChanges() { slots.numActive.owner()->endChange(); }

int ModMatrixParamController::findFreeSlot()
{
    const int used = slots.numActive.value();
    if (used >= slotCount())
        return -1;
    slots.numActive.setValue(static_cast<float>(used + 1), announceChange);
    return used;
}

float ModMatrixParamController::level(int slot) const noexcept
{
    const ModulationTargetParameter& parameter = slots[slot].level;
    return parameter.valueToSignal(parameter.currentValue());
}

void ModMatrixParamController::setSource(int slot, int source) { setRaw(slots[slot].source, source + 1); }

void ModMatrixParamController::setTarget(int slot, int target) { setRaw(slots[slot].target, target + 1); }

void ModMatrixParamController::setLevel(int slot, float level)
{
    ModulationTargetParameter& parameter = slots[slot].level;
    parameter.setValue(parameter.signalToValue(level), announceChange);
}

void ModMatrixParamController::setBypassed(int slot, bool bypassed)
{
    setRaw(slots[slot].bypassed, bypassed);
}

void ModMatrixParamController::setInverted(int slot, bool inverted)
{
    setRaw(slots[slot].inverted, inverted);
}

void ModMatrixParamController::visitSlotsOf(int target) noexcept
{
    for (int slot = 0; slot < slotCount(); ++slot)
        if (this->target(slot) == target)
            visitSlot(slot);
}
