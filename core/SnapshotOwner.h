#pragma once

#include "presets/CustomValues.h"

#include <cstdint>
#include <string>
#include <vector>

class CompareStates;
class UndoHistory;

/// Which preset a plug-in plays, and whether it has been changed since.
struct PresetIdentity {
    std::string name;
    std::string path;
    bool modified = false;

    friend bool operator==(const PresetIdentity&, const PresetIdentity&) = default;
};

/// What undo and compare need of the plug-in whose states they keep. Thread: main.
class SnapshotOwner {
public:
    using InterfaceState = std::vector<std::uint8_t>;

    virtual ~SnapshotOwner() = default;

    virtual UndoHistory& undoHistory() = 0;
    virtual CompareStates& compareStates() = 0;

    // The values that presets hold, in their order.

    virtual std::vector<float> storedValues() const = 0;
    /// Takes all values at one block boundary, with a soft reset, and tells the host.
    virtual void restoreStoredValues(const std::vector<float>& values) = 0;

    virtual PresetIdentity presetIdentity() const = 0;
    /// Takes the record over. The host and the listener hear of it only if `pathChanged`.
    virtual void restorePresetIdentity(const PresetIdentity& identity, bool pathChanged) = 0;

    virtual InterfaceState interfaceState() const = 0;
    /// The listener hears of it.
    virtual void restoreInterfaceState(const InterfaceState& state) = 0;

    virtual const CustomValues& customValues() const = 0;
    /// The listener hears of it.
    virtual void restoreCustomValues(const CustomValues& values) = 0;
};
