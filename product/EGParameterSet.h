#pragma once

#include "modulation/ModulationTargetParameter.h"
#include "modulation/SourceParameterSetList.h"
#include "modulation/Triggering.h"
#include "parameters/IndexedPluginParameter.h"

/// The controls of one envelope generator. Signals of times are in seconds.
class EGParameterSet : public PluginParameterSet {
public:
    /// @param generator  from 0
    EGParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int generator);
    void initialise() override;

    ModulationTargetParameter hold;
    ModulationTargetParameter delay;
    FloatPluginParameter threshold;  // signal is a gain
    IndexedPluginParameter<Triggering> triggering;
    ModulationTargetParameter attack;
    ModulationTargetParameter decay;
    ModulationTargetParameter sustain;
    ModulationTargetParameter release;
};

class EGParameterSetList : public SourceParameterSetList<EGParameterSet> {
public:
    EGParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
