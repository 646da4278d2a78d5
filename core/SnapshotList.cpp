#include "core/SnapshotList.h"

#include "core/CompareStates.h"

void SnapshotList::store(int index, const std::string& description)
{
    Snapshot& entry = snapshots[static_cast<std::size_t>(index)];
    entry.description = description;
    entry.presetState = owner.presetIdentity();
    entry.compareIndex = owner.compareStates().current();
    entry.values = owner.storedValues();
    entry.interfaceState = owner.interfaceState();
    entry.customValues = owner.customValues();
}

void SnapshotList::restore(int index)
{
    const Snapshot& entry = at(index);
    if (entry.values.empty())
        return;
    // First: values that change would mark the preset as modified.
    owner.restoreStoredValues(entry.values);
    owner.restorePresetIdentity(entry.presetState, entry.presetState.path != owner.presetIdentity().path);
    owner.restoreInterfaceState(entry.interfaceState);
    owner.restoreCustomValues(entry.customValues);
}
