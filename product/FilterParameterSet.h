#pragma once

#include "dsp/FilterTypes.h"
#include "modulation/ModulationTargetParameter.h"
#include "parameters/IndexedPluginParameter.h"
#include "parameters/ParameterSetArray.h"
#include "product/SordelinTypes.h"

/// The controls of one filter.
class FilterParameterSet : public PluginParameterSet {
public:
    /// @param filter  from 0
    FilterParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int filter);
    void initialise() override;

    ModulationTargetParameter frequency;  // signal in log2 of Hz
    ModulationTargetParameter pan;        // signal in octaves, up on one channel and down on the other
    ModulationTargetParameter peak;
    IndexedPluginParameter<FilterCharacteristic> characteristic;
    IndexedPluginParameter<FilterResponse> response;
    IndexedPluginParameter<FilterSlope> slope;
    IndexedPluginParameter<bool> enabled;
};

class FilterParameterSetArray : public ParameterSetArray<FilterParameterSet> {
public:
    FilterParameterSetArray(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
