#pragma once

#include "modulation/ModulationController.h"

class ModulationSlotParameterSetList;

/// What the editor, lists and preset loaders do with whole slots. Slots that hang on another slot's level
/// follow it: references to slots are by the target id of the level. Thread: that of the controller.
class SlotOperations {
public:
    using SlotNumbers = std::vector<int>;

    explicit SlotOperations(ModulationMatrix::Controller& slotController) : controller(slotController) {}

    void copySlot(int from, int to);
    /// Exchanges two slots, together with what points at their levels.
    void swapSlots(int a, int b);
    /// Empties a slot and all that modulate its level, and so on. Appends their numbers to `removed`.
    void clearSlot(int slot, SlotNumbers& removed);
    void clearSlotsOfTarget(int target, SlotNumbers& removed);
    /// Orders the first `count` slots by source, then target; slots without come last. Equals keep their
    /// order.
    /// @param selected  the number of a slot to be followed, or -1
    void sortSlots(int count, int& selected);
    /// Multiplies a slot's level by `a / b`, and what modulates the level with it. `b` isn't 0.
    void scaleLevel(int slot, float a, float b);
    /// Makes a free slot a copy with `factor` times the level; a negative factor turns it upside down. What
    /// modulates the level is copied too, as far as there are free slots. Returns the copy, or -1.
    int splitSlot(int slot, float factor);

private:
    void retarget(const SlotNumbers& slots, int target);
    int splitSlot(int slot, float factor, SlotNumbers& done);
    bool belongsBefore(int a, int b) const;

    ModulationMatrix::Controller& controller;
};

/// Takes slots that have been cleared out of the list.
void removeClearedSlots(ModulationSlotParameterSetList& slots, std::vector<int> cleared);

/// Takes out the slots that use a source, those on the source's own targets, and all that hang on these.
void removeSlotsOfSource(ModulationMatrix::Controller& controller, ModulationSlotParameterSetList& slots,
                         int source);

/// Closes the gaps among the first `count` slots, sorts them, and takes out those that lack their source or
/// their target.
void compactSlots(ModulationMatrix::Controller& controller, ModulationSlotParameterSetList& slots, int count);
