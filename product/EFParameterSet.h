#pragma once

#include "core/GenericPluginBase.h"
#include "modulation/ModulationTargetParameter.h"
#include "modulation/SourceParameterSetList.h"
#include "parameters/IndexedPluginParameter.h"

/// The controls of one envelope follower. Signals of times are in seconds.
class EFParameterSet : public PluginParameterSet {
public:
    /// @param follower  from 0
    EFParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int follower);
    void initialise() override;

    IndexedPluginParameter<GenericPluginBase::InputSignal> input;
    ModulationTargetParameter attack;
    ModulationTargetParameter release;
};

class EFParameterSetList : public SourceParameterSetList<EFParameterSet> {
public:
    EFParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
