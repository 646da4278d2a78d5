#pragma once

#include "modulation/MidiModSourceTypes.h"
#include "modulation/SourceParameterSetList.h"
#include "parameters/IndexedPluginParameter.h"

/// The controls of one MIDI source.
class MidiSourceParameterSet : public PluginParameterSet {
public:
    /// @param source  from 0
    MidiSourceParameterSet(GenericParameterOwner& owner, int source);
    void initialise() override;

    IndexedPluginParameter<MidiModSourceInput> input;
    IndexedPluginParameter<int> controllerNumber;
    IndexedPluginParameter<MidiModSourceCurve> responseCurve;
};

class MidiSourceParameterSetList : public SourceParameterSetList<MidiSourceParameterSet> {
public:
    MidiSourceParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
