#include "core/UndoHistory.h"

#include "core/CompareStates.h"

#include <algorithm>

void UndoHistory::initialise()
{
    if (position == 0 && undoCount == 0 && redoCount == 0)
        snapshots.store(position, "Initial state");
}

void UndoHistory::pushState()
{
    pushSwitch();
    owner.compareStates().markChanged();
}

void UndoHistory::pushSwitch()
{
    position = (position + 1) % slotCount;
    snapshots.store(position, {});
    redoCount = 0;
    undoCount = std::min(undoCount + 1, mostSteps);
}

void UndoHistory::step(int delta)
{
    position = (position + delta + slotCount) % slotCount;
    // Before the state changes: the one that is left is kept for the compare state that it belongs to.
    owner.compareStates().select(snapshots.at(position).compareIndex);
    snapshots.restore(position);
    owner.compareStates().markChanged();
}

void UndoHistory::undo()
{
    if (undoCount < 1)
        return;
    step(-1);
    --undoCount;
    redoCount = std::min(redoCount + 1, mostSteps);
}

void UndoHistory::redo()
{
    if (redoCount < 1)
        return;
    step(1);
    undoCount = std::min(undoCount + 1, mostSteps);
    --redoCount;
}
