#pragma once

#include "modulation/ModulationSlotParameters.h"
#include "modulation/ModulationTargetParameter.h"
#include "parameters/IndexedPluginParameter.h"
#include "parameters/ParameterSetList.h"

/// A slot of the modulation matrix: which source moves which target, and how far. Its level is a target
/// itself.
class ModulationSlotParameterSet : public PluginParameterSet {
public:
    /// @param slot  from 0
    ModulationSlotParameterSet(GenericParameterOwner& owner, const ModulationSlotParameters& shared,
                               int slot);
    void initialise() override;

    IndexedPluginParameter<int> source;
    ModulationTargetParameter level;
    IndexedPluginParameter<bool> bypassed;
    IndexedPluginParameter<bool> inverted;
    IndexedPluginParameter<int> target;

private:
    const ModulationSlotParameters& slots;
};

class ModulationSlotParameterSetList : public ParameterSetList<ModulationSlotParameterSet> {
public:
    ModulationSlotParameterSetList(GenericParameterOwner& owner, const ModulationSlotParameters& shared,
                                   int slotCount);
};
