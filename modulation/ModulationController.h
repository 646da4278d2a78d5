#pragma once

#include "foundation/Property.h"
#include "modulation/ModulationMatrix.h"
#include "modulation/VisitedTargets.h"

#include <vector>

/// How the rest of the system reads and changes slots, whether it stands on the matrix or on the slots'
/// parameters. Slots, sources and targets go by number; -1 is none.
/// Thread: that of what stands behind it. What takes no memory is marked.
class ModulationMatrix::Controller {
public:
    using SlotNumbers = std::vector<int>;  // ascending

    explicit Controller(const ModulationConfiguration& modulationConfiguration);
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;
    virtual ~Controller() = default;

    /// Brackets changes that belong together. Brackets nest.
    virtual void beginChanges() {}
    virtual void endChanges() {}

    /// A slot to connect, which counts as in use from now on. -1 if there is none.
    virtual int findFreeSlot() = 0;

    virtual int source(int slot) const noexcept REALTIME = 0;
    virtual int target(int slot) const noexcept REALTIME = 0;
    virtual float level(int slot) const noexcept REALTIME = 0;  // 0..1, the level's signal
    virtual bool isBypassed(int slot) const noexcept REALTIME = 0;
    virtual bool isInverted(int slot) const noexcept REALTIME = 0;

    virtual void setSource(int slot, int source) = 0;
    virtual void setTarget(int slot, int target) = 0;
    virtual void setLevel(int slot, float level) = 0;
    virtual void setBypassed(int slot, bool bypassed) = 0;
    virtual void setInverted(int slot, bool inverted) = 0;

    /// False if the slot lacks its source or its target, is bypassed, or would close a circle: if its signal
    /// depends on its own target. Bypassed slots count as links of the circle.
    bool isValid(int slot) noexcept REALTIME;

    int slotCount() const noexcept REALTIME { return configuration.slotCount; }
    int levelTarget(int slot) const noexcept REALTIME { return configuration.firstSlotTarget + slot; }
    bool isEmpty(int slot) const noexcept REALTIME { return source(slot) < 0 && target(slot) < 0; }

    SlotNumbers slotsOfSource(int source) const { return slotsOfSources(source, 1); }
    SlotNumbers slotsOfSources(int first, int count) const;
    SlotNumbers slotsOfTarget(int target) const { return slotsOfTargetRange(target, 1); }
    SlotNumbers slotsOfTargetRange(int first, int count) const;
    SlotNumbers slotsOfTargets(const std::vector<int>& ids) const;
    /// Slots with a source and a target, the source of this kind and the target with this range; -1 matches
    /// any.
    SlotNumbers slotsMatching(int sourceKind, int rangeIndex) const;

    Property<float> defaultLevel{0.5f};  // of a new connection; a signal
    const ModulationConfiguration& configuration;

protected:
    /// Visits the slots that point at a target.
    virtual void visitSlotsOf(int target) noexcept REALTIME = 0;
    /// Marks all targets on which the slot's contribution depends.
    void visitSlot(int slot) noexcept REALTIME;

private:
    void visit(int target) noexcept REALTIME;

    VisitedTargets visited;
};
