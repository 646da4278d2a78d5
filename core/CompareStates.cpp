#include "core/CompareStates.h"

#include "core/UndoHistory.h"

void CompareStates::initialise()
{
    if (initialised)
        return;
    snapshots.store(currentIndex, {});
    copyToOther();
    initialised = true;
}

void CompareStates::toggle()
{
    select(1 - currentIndex);
    snapshots.restore(currentIndex);
    owner.undoHistory().pushSwitch();
}

void CompareStates::copyToOther()
{
    snapshots.store(1 - currentIndex, {});
    changedSinceCopy = false;
}

void CompareStates::select(int index)
{
    if (index == currentIndex)
        return;
    snapshots.store(currentIndex, {});
    currentIndex = index;
}
