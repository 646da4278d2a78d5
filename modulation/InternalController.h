#pragma once

#include "modulation/ModulationController.h"

/// The slots of the matrix itself. Thread: audio.
class ModulationMatrix::InternalController : public ModulationMatrix::Controller {
public:
    InternalController(const ModulationConfiguration& modulationConfiguration,
                       ModulationMatrix& controlledMatrix)
        : Controller(modulationConfiguration), matrix(controlledMatrix)
    {}

    /// The first empty slot, else the first that reaches nothing.
    int findFreeSlot() noexcept REALTIME override;

    int source(int slot) const noexcept REALTIME override { return matrix.slot(slot).source; }
    int target(int slot) const noexcept REALTIME override { return matrix.slot(slot).target; }
    float level(int slot) const noexcept REALTIME override
    {
        return matrix.target(levelTarget(slot)).parameterSignal();
    }
    bool isBypassed(int slot) const noexcept REALTIME override { return matrix.slot(slot).bypassed; }
    bool isInverted(int slot) const noexcept REALTIME override { return matrix.slot(slot).inverted; }

    void setSource(int slot, int source) noexcept REALTIME override { matrix.setSlotSource(slot, source); }
    void setTarget(int slot, int target) noexcept REALTIME override { matrix.setSlotTarget(slot, target); }
    void setLevel(int slot, float level) noexcept REALTIME override { matrix.setSlotLevel(slot, level); }
    void setBypassed(int slot, bool bypassed) noexcept REALTIME override
    {
        matrix.setSlotBypassed(slot, bypassed);
    }
    void setInverted(int slot, bool inverted) noexcept REALTIME override
    {
        matrix.setSlotInverted(slot, inverted);
    }

protected:
    void visitSlotsOf(int target) noexcept REALTIME override;

private:
    ModulationMatrix& matrix;
};
