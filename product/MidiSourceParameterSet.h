#pragma once

#include "modulation/MidiModSource.h"
#include "modulation/SourceParameterSetList.h"
#include "parameters/IndexedPluginParameter.h"

/// The controls of one MIDI source.
class MidiSourceParameterSet : public PluginParameterSet {
public:
    /// @param source  from 0
    MidiSourceParameterSet(GenericParameterOwner& owner, int source);
    void initialise() override;

    IndexedPluginParameter<MidiModSource::MidiInput> input;
    IndexedPluginParameter<int> controllerNumber;
    IndexedPluginParameter<MidiModSource::ResponseCurve> responseCurve;
};

class MidiSourceParameterSetList : public SourceParameterSetList<MidiSourceParameterSet> {
public:
    MidiSourceParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
