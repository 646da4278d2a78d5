#pragma once

#include "core/SnapshotOwner.h"
#include "foundation/ManagedObject.h"

/// A full state of a plug-in, but for the parameters that presets don't hold.
struct Snapshot {
    std::string description;
    PresetIdentity presetState;
    int compareIndex = 0;  // the compare state that it belongs to
    std::vector<float> values;
    SnapshotOwner::InterfaceState interfaceState;
    CustomValues customValues;
};

/// States of one plug-in, by number. Thread: main.
class SnapshotList : public ManagedObject {
public:
    /// All entries exist from now on, and are empty. `owner` outlives the list.
    SnapshotList(SnapshotOwner& snapshotOwner, int count)
        : owner(snapshotOwner), snapshots(static_cast<std::size_t>(count))
    {}

    /// Fills an entry from the plug-in.
    void store(int index, const std::string& description);
    /// Makes the plug-in equal to an entry. One that was never filled changes nothing.
    void restore(int index);

    const Snapshot& at(int index) const { return snapshots[static_cast<std::size_t>(index)]; }
    int count() const { return static_cast<int>(snapshots.size()); }

private:
    SnapshotOwner& owner;
    std::vector<Snapshot> snapshots;
};
