#pragma once

#include "modulation/ModulationController.h"
#include "modulation/ModulationSlotParameterSet.h"

/// The slots as their parameters tell them, for a half of a plug-in that needn't have a matrix. Thread: main.
class ModMatrixParamController : public ModulationMatrix::Controller {
public:
    /// Takes the default level from the slots' parameters.
    ModMatrixParamController(const ModulationConfiguration& modulationConfiguration,
                             ModulationSlotParameterSetList& slotList);

    void beginChanges() override;
    void endChanges() override;

    /// The first slot that isn't in use.
    int findFreeSlot() override;

    int source(int slot) const noexcept REALTIME override { return slots[slot].source.value() - 1; }
    int target(int slot) const noexcept REALTIME override { return slots[slot].target.value() - 1; }
    float level(int slot) const noexcept REALTIME override;
    bool isBypassed(int slot) const noexcept REALTIME override { return slots[slot].bypassed.value(); }
    bool isInverted(int slot) const noexcept REALTIME override { return slots[slot].inverted.value(); }

    void setSource(int slot, int source) override;
    void setTarget(int slot, int target) override;
    void setLevel(int slot, float level) override;
    void setBypassed(int slot, bool bypassed) override;
    void setInverted(int slot, bool inverted) override;

protected:
    void visitSlotsOf(int target) noexcept REALTIME override;

private:
    ModulationSlotParameterSetList& slots;
};
