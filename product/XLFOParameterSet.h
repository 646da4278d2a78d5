#pragma once

#include "modulation/ModulationTargetParameter.h"
#include "modulation/SourceParameterSetList.h"
#include "modulation/XLFO.h"
#include "modulation/XLFOFreqController.h"
#include "parameters/IndexedPluginParameter.h"
#include "parameters/ParameterSetList.h"

/// The controls of one XLFO, with its steps. The steps' parameters are the set's own too, so that copying the
/// set copies them.
class XLFOParameterSet : public PluginParameterSet {
public:
    class StepParameterSet : public PluginParameterSet {
    public:
        /// @param step  from 0
        StepParameterSet(XLFOParameterSet& xlfo, int step);
        void initialise() override;

        FloatPluginParameter value;
        FloatPluginParameter glide;
        IndexedPluginParameter<XLFO::GlideCurve> glideCurve;
        IndexedPluginParameter<bool> random;
    };

    class StepParameterSetList : public ParameterSetList<StepParameterSet> {
    public:
        explicit StepParameterSetList(XLFOParameterSet& xlfo);
    };

    /// @param xlfo  from 0
    XLFOParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int xlfo);
    void initialise() override;

    ModulationTargetParameter frequency;    // signal in Hz
    FloatPluginParameter frequencyOffset;   // signal is a factor
    FloatPluginParameter balance;           // where the second half of the steps begins
    ModulationTargetParameter phaseOffset;  // cycles
    ModulationTargetParameter glide;        // added to each step's own
    IndexedPluginParameter<XLFOFreqController::SyncMode> syncMode;
    IndexedPluginParameter<bool> midiTrigger;
    IndexedPluginParameter<bool> snap;
    StepParameterSetList steps;
};

class XLFOParameterSetList : public SourceParameterSetList<XLFOParameterSet> {
public:
    XLFOParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
