#include "modulation/InternalController.h"

int ModulationMatrix::InternalController::findFreeSlot() noexcept
{
    for (int slot = 0; slot < slotCount(); ++slot)
        if (isEmpty(slot))
            return slot;
    for (int slot = 0; slot < slotCount(); ++slot)
        if (!isValid(slot))
            return slot;
    return -1;
}

void ModulationMatrix::InternalController::visitSlotsOf(int target) noexcept
{
    for (const ModulationSlot* slot : matrix.target(target).slots)
        visitSlot(slot->index);
}
