#pragma once

#include "core/GenericPluginBase.h"
#include "core/MidiMultiVirtualPluginParameter.h"
#include "dsp/DelayLine.h"
#include "modulation/ModulationSlotParameterSet.h"
#include "product/DelayParameterSet.h"
#include "product/EFParameterSet.h"
#include "product/EGParameterSet.h"
#include "product/FilterParameterSet.h"
#include "product/MidiSourceParameterSet.h"
#include "product/XLFOParameterSet.h"
#include "product/XYParameterSet.h"

/// The product's parameter tree, which both halves of a plug-in build. The order of the members is the order
/// in which hosts list the parameters, and a parameter's place in it identifies it in every saved song: it
/// never changes. Thread: main.
class SordelinParameters {
public:
    /// The tree stands afterwards, but has neither ranges nor texts.
    SordelinParameters(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
    SordelinParameters(const SordelinParameters&) = delete;
    SordelinParameters& operator=(const SordelinParameters&) = delete;

    /// Gives the parameters their ranges, texts and defaults, and the modulation its configuration. Called
    /// once.
    void initialise();

    DelayParameterSetArray delays;
    IndexedPluginParameter<DelayLinkState> feedbackLink;
    IndexedPluginParameter<DelayLinkState> delayLink;
    IndexedPluginParameter<DelayLine::ReadType> delayReadStyle;
    IndexedPluginParameter<bool> delayFreeze;

    FilterParameterSetArray filters;
    IndexedPluginParameter<FilterRouting> filterRouting;

    ModulationTargetParameter inputLevel;  // signals of levels are gains
    ModulationTargetParameter dryLevel;
    ModulationTargetParameter dryPan;
    ModulationTargetParameter wetLevel;
    ModulationTargetParameter wetPan;
    IndexedPluginParameter<ChannelMode> channelMode;

    XYParameterSetList xyControllers;
    XLFOParameterSetList xlfos;
    EGParameterSetList envelopeGenerators;
    EFParameterSetList envelopeFollowers;
    MidiSourceParameterSetList midiSources;
    IndexedPluginParameter<GenericPluginBase::MidiState> receiveMidi;

    const ModulationSlotParameters slotParameters;  // what the slots share
    ModulationSlotParameterSetList slots;

    IndexedPluginParameter<bool> autoMuteSelfOscillation;
    IndexedPluginParameter<AuditionSignal> auditionSignal;
    IndexedPluginParameter<bool> dryEnabled;

    // For MIDI controllers alone: both filters at once.
    MidiMultiVirtualPluginParameter filterLinkFrequency;
    MidiMultiVirtualPluginParameter filterLinkPeak;

private:
    void initialiseSwitches();
    void initialiseLevels();

    ModulationMatrixOwner& modulationOwner;
};
