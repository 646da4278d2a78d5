#pragma once

#include "core/SnapshotList.h"
#include "foundation/ManagedObject.h"

/// The last states of a plug-in, as many as 100 steps lead to, in a ring. The entry at `position` is the
/// state after the last finished change:
///
///   ... | undo | undo | position | redo | (free, or fallen out) ...
///
/// Thread: main.
class UndoHistory : public ManagedObject {
public:
    static constexpr int mostSteps = 100;

    explicit UndoHistory(SnapshotOwner& snapshotOwner)
        : owner(snapshotOwner), snapshots(snapshotOwner, slotCount)
    {}

    /// When an interface opens. The first time, the present state becomes the one to go back to.
    void initialise();

    /// A change is finished: the present state is one step further. What could be redone is gone.
    void pushState();
    /// The same for going over to the other compare state, which is no change to copy.
    void pushSwitch();
    void undo();
    void redo();

    bool canUndo() const noexcept { return undoCount > 0; }
    bool canRedo() const noexcept { return redoCount > 0; }

private:
    static constexpr int slotCount = mostSteps + 1;  // the steps' ends

    void step(int delta);

    SnapshotOwner& owner;
    int redoCount = 0;
    int undoCount = 0;
    int position = 0;
    SnapshotList snapshots;
};
