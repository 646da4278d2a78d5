#pragma once

#include "modulation/MidiModSourceTypes.h"
#include "parameters/IndexedPluginParameter.h"
#include "parameters/ParameterSetList.h"

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

class MidiSourceParameterSetList : public ParameterSetList<MidiSourceParameterSet> {
public:
    explicit MidiSourceParameterSetList(GenericParameterOwner& owner);
};
