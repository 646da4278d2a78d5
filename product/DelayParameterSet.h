#pragma once

#include "modulation/ModulationTargetParameter.h"
#include "parameters/ParameterSetArray.h"
#include "parameters/ToggleFloatPluginParameter.h"
#include "product/SordelinTypes.h"

/// The controls of one delay line.
class DelayParameterSet : public PluginParameterSet {
public:
    /// @param delay  from 0
    DelayParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int delay);
    void initialise() override;

    ModulationTargetParameter time;    // signal in ms
    ModulationTargetParameter offset;  // signal is a factor
    IndexedPluginParameter<DelaySync> sync;
    ModulationTargetParameter feedback;
    ModulationTargetParameter crossFeedback;
    ToggleFloatPluginParameter<FeedbackInvert> feedbackInvert;
    ModulationTargetParameter pan;
};

class DelayParameterSetArray : public ParameterSetArray<DelayParameterSet> {
public:
    DelayParameterSetArray(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
