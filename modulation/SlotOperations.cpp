#include "modulation/SlotOperations.h"

#include "modulation/ModulationSlotParameterSet.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <utility>

namespace {

/// Brackets changes for as long as it lives.
class ChangeBracket {
public:
    explicit ChangeBracket(ModulationMatrix::Controller& slotController) : controller(slotController)
    {
        controller.beginChanges();
    }
    ChangeBracket(const ChangeBracket&) = delete;
    ChangeBracket& operator=(const ChangeBracket&) = delete;
    ~ChangeBracket() { controller.endChanges(); }

private:
    ModulationMatrix::Controller& controller;
};

bool contains(const std::vector<int>& slots, int slot)
{
    return std::find(slots.begin(), slots.end(), slot) != slots.end();
}

/// Orders an id, with none behind all others.
int sortKey(int id) { return id < 0 ? INT_MAX : id; }

}  // namespace

void SlotOperations::copySlot(int from, int to)
{
    controller.setSource(to, controller.source(from));
    controller.setTarget(to, controller.target(from));
    controller.setInverted(to, controller.isInverted(from));
    controller.setBypassed(to, controller.isBypassed(from));
    controller.setLevel(to, controller.level(from));
}

void SlotOperations::swapSlots(int a, int b)
{
    if (a == b)
        return;
    const ChangeBracket bracket(controller);
    const int source = controller.source(a);
    const int target = controller.target(a);
    const float level = controller.level(a);
    const bool bypassed = controller.isBypassed(a);
    const bool inverted = controller.isInverted(a);
    copySlot(b, a);
    controller.setSource(b, source);
    controller.setTarget(b, target);
    controller.setLevel(b, level);
    controller.setBypassed(b, bypassed);
    controller.setInverted(b, inverted);

    const SlotNumbers onA = controller.slotsOfTarget(controller.levelTarget(a));
    const SlotNumbers onB = controller.slotsOfTarget(controller.levelTarget(b));
    retarget(onA, controller.levelTarget(b));
    retarget(onB, controller.levelTarget(a));
}

void SlotOperations::retarget(const SlotNumbers& slots, int target)
{
    for (const int slot : slots)
        controller.setTarget(slot, target);
}

void SlotOperations::clearSlot(int slot, SlotNumbers& removed)
{
    const ChangeBracket bracket(controller);
    SlotNumbers pending{slot};
    for (std::size_t next = 0; next < pending.size(); ++next) {
        const int cleared = pending[next];
        controller.setSource(cleared, -1);
        controller.setTarget(cleared, -1);
        controller.setBypassed(cleared, false);
        controller.setInverted(cleared, false);
        controller.setLevel(cleared, 0.0f);
        removed.push_back(cleared);
        const SlotNumbers hanging = controller.slotsOfTarget(controller.levelTarget(cleared));
        pending.insert(pending.end(), hanging.begin(), hanging.end());
    }
}

void SlotOperations::clearSlotsOfTarget(int target, SlotNumbers& removed)
{
    const ChangeBracket bracket(controller);
    for (const int slot : controller.slotsOfTarget(target))
        if (controller.target(slot) == target)  // a chain may have taken it already
            clearSlot(slot, removed);
}

void SlotOperations::sortSlots(int count, int& selected)
{
    const ChangeBracket bracket(controller);
    for (int slot = 1; slot < count; ++slot)
        for (int place = slot; place > 0 && belongsBefore(place, place - 1); --place) {
            swapSlots(place, place - 1);
            if (selected == place)
                selected = place - 1;
            else if (selected == place - 1)
                selected = place;
        }
}

bool SlotOperations::belongsBefore(int a, int b) const
{
    const auto key = [this](int slot) {
        return std::pair(sortKey(controller.source(slot)), sortKey(controller.target(slot)));
    };
    return key(a) < key(b);
}

void SlotOperations::scaleLevel(int slot, float a, float b)
{
    const ChangeBracket bracket(controller);
    SlotNumbers scaled{slot};  // each once, also where slots hang on each other
    for (std::size_t next = 0; next < scaled.size(); ++next) {
        controller.setLevel(scaled[next], controller.level(scaled[next]) * a / b);
        for (const int hanging : controller.slotsOfTarget(controller.levelTarget(scaled[next])))
            if (!contains(scaled, hanging))
                scaled.push_back(hanging);
    }
}

int SlotOperations::splitSlot(int slot, float factor)
{
    const ChangeBracket bracket(controller);
    SlotNumbers done;
    return splitSlot(slot, factor, done);
}

/// @param done  originals and copies, which aren't split again where slots hang on each other
int SlotOperations::splitSlot(int slot, float factor, SlotNumbers& done)
{
    const int copy = controller.findFreeSlot();
    if (copy < 0)
        return -1;
    done.push_back(slot);
    done.push_back(copy);
    copySlot(slot, copy);
    controller.setLevel(copy, controller.level(slot) * std::fabs(factor));
    if (factor < 0.0f)
        controller.setInverted(copy, !controller.isInverted(slot));
    for (const int hanging : controller.slotsOfTarget(controller.levelTarget(slot))) {
        if (contains(done, hanging))
            continue;
        // The sign is in the copy's own direction; what moves its level keeps moving it the same way.
        const int hangingCopy = splitSlot(hanging, std::fabs(factor), done);
        if (hangingCopy >= 0)
            controller.setTarget(hangingCopy, controller.levelTarget(copy));
    }
    return copy;
}

void removeClearedSlots(ModulationSlotParameterSetList& slots, std::vector<int> cleared)
{
    // From the top down, as the slots above a removed one move.
    std::sort(cleared.rbegin(), cleared.rend());
    for (const int slot : cleared)
        slots.removeSet(slot);
}

void removeSlotsOfSource(ModulationMatrix::Controller& controller, ModulationSlotParameterSetList& slots,
                         int source)
{
    const ChangeBracket bracket(controller);
    SlotOperations operations(controller);
    std::vector<int> cleared;
    for (const int slot : controller.slotsOfSource(source))
        if (controller.source(slot) == source)
            operations.clearSlot(slot, cleared);
    for (const int own : controller.configuration.sources[static_cast<std::size_t>(source)].ownTargets)
        operations.clearSlotsOfTarget(own, cleared);
    removeClearedSlots(slots, std::move(cleared));
}

void compactSlots(ModulationMatrix::Controller& controller, ModulationSlotParameterSetList& slots, int count)
{
    const ChangeBracket bracket(controller);
    SlotOperations operations(controller);
    int used = 0;
    for (int slot = 0; slot < count; ++slot)
        if (!controller.isEmpty(slot))
            operations.swapSlots(slot, used++);
    int selected = -1;
    operations.sortSlots(count, selected);
    slots.numActive.setValue(static_cast<float>(used), announceChange);
    for (int slot = used - 1; slot >= 0; --slot)
        if (controller.source(slot) < 0 || controller.target(slot) < 0)
            slots.removeSet(slot);
}
