#pragma once

#include "core/SnapshotList.h"
#include "foundation/ManagedObject.h"

/// Two states of a plug-in to compare, A and B. The one that is heard is the plug-in's own; its entry is
/// filled when it is left. Thread: main.
class CompareStates : public ManagedObject {
public:
    explicit CompareStates(SnapshotOwner& snapshotOwner) : owner(snapshotOwner), snapshots(snapshotOwner, 2)
    {}

    /// When an interface opens. The first time, both states take the present one.
    void initialise();

    /// Goes over to the other state, as one step of undo.
    void toggle();
    /// Makes the other state equal to the present one.
    void copyToOther();
    /// Notes that the plug-in is in a state now, keeping what it was in as the other one. Restores nothing.
    /// @param index  0 for A, 1 for B
    void select(int index);

    /// 0 for A, 1 for B.
    int current() const noexcept { return currentIndex; }
    /// True if there may be something to copy: the present state has changed since the last copy.
    bool changed() const noexcept { return changedSinceCopy; }
    void markChanged() noexcept { changedSinceCopy = true; }

private:
    SnapshotOwner& owner;
    int currentIndex = 0;
    bool changedSinceCopy = false;
    bool initialised = false;
    SnapshotList snapshots;
};
