#include "modulation/AbstractSourceParameterSetList.h"

#include "modulation/ModMatrixParamController.h"
#include "modulation/SlotOperations.h"

AbstractSourceParameterSetList::AbstractSourceParameterSetList(GenericParameterOwner& listOwner,
                                                               std::string_view listName,
                                                               ModulationMatrixOwner& matrixOwner,
                                                               Numbers sources, Numbers targets)
    : AbstractTargetParameterSetList(listOwner, listName, matrixOwner, targets.first, targets.perSet),
      firstSource(sources.first),
      sourcesPerSet(sources.perSet)
{}

void AbstractSourceParameterSetList::removeSet(int i)
{
    if (!isRemovable(i))
        return;
    ModMatrixParamController& controller = modulationOwner.slotController();
    controller.beginChanges();
    for (int k = 0; k < sourcesPerSet; ++k)
        removeSlotsOfSource(controller, *modulationOwner.slotList, firstSourceOf(i) + k);
    AbstractTargetParameterSetList::removeSet(i);
    renumberSources(i);
    controller.endChanges();
}

void AbstractSourceParameterSetList::renumberSources(int removed)
{
    ModulationMatrix::Controller& controller = modulationOwner.slotController();
    const int first = firstSourceOf(removed + 1);
    const int end = firstSourceOf(numActive.format.maximum);
    for (const int slot : controller.slotsOfSources(first, end - first))
        controller.setSource(slot, controller.source(slot) - sourcesPerSet);
}

void AbstractSourceParameterSetList::trim()
{
    for (int i = numActive.value() - 1; i >= numActive.format.minimum; --i)
        if (modulationOwner.slotController().slotsOfSources(firstSourceOf(i), sourcesPerSet).empty())
            removeSet(i);
}
