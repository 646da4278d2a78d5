#include "modulation/AbstractTargetParameterSetList.h"

#include "modulation/ModMatrixParamController.h"
#include "modulation/SlotOperations.h"

#include <algorithm>

AbstractTargetParameterSetList::AbstractTargetParameterSetList(GenericParameterOwner& listOwner,
                                                               std::string_view listName,
                                                               ModulationMatrixOwner& matrixOwner,
                                                               int firstTargetId, int targetsPerEntry)
    : AbstractParameterSetList(listOwner, listName),
      modulationOwner(matrixOwner),
      firstTarget(firstTargetId),
      targetsPerSet(targetsPerEntry)
{}

bool AbstractTargetParameterSetList::isRemovable(int i) const
{
    return i >= 0 && i < numActive.value() && numActive.value() > numActive.format.minimum;
}

void AbstractTargetParameterSetList::removeSet(int i)
{
    if (!isRemovable(i))
        return;
    modulationOwner.slotController().beginChanges();
    const int place = removeSlotsOnto(i);
    if (place >= 0) {
        AbstractParameterSetList::removeSet(place);
        renumberTargets(place);
    }
    modulationOwner.slotController().endChanges();
}

/// Removes the slots on the targets of entry `i`. Where the entries are the slots themselves, the entry moves
/// up by that: returns its new place, or -1 if it was removed too, for slots on each other's levels.
int AbstractTargetParameterSetList::removeSlotsOnto(int i)
{
    SlotOperations operations(modulationOwner.slotController());
    std::vector<int> cleared;
    for (int k = 0; k < targetsPerSet; ++k)
        operations.clearSlotsOfTarget(firstTarget + targetsPerSet * i + k, cleared);
    removeClearedSlots(*modulationOwner.slotList, cleared);
    if (static_cast<AbstractParameterSetList*>(modulationOwner.slotList) != this)
        return i;
    if (std::find(cleared.begin(), cleared.end(), i) != cleared.end())
        return -1;
    return i - static_cast<int>(
                   std::count_if(cleared.begin(), cleared.end(), [i](int slot) { return slot < i; }));
}

void AbstractTargetParameterSetList::renumberTargets(int removed)
{
    ModulationMatrix::Controller& controller = modulationOwner.slotController();
    const int first = firstTarget + targetsPerSet * (removed + 1);
    const int end = firstTarget + targetsPerSet * numActive.format.maximum;
    for (const int slot : controller.slotsOfTargetRange(first, end - first))
        controller.setTarget(slot, controller.target(slot) - targetsPerSet);
}
