#include "product/SordelinParameters.h"

#include "dsp/Conversions.h"
#include "parameters/DBParameterUnits.h"
#include "parameters/ParameterCurves.h"
#include "product/SordelinModulation.h"
#include "product/SordelinModulationIds.h"
#include "product/SwitchItems.h"

namespace {

constexpr std::string_view linkItems[] = {"Separate", "Linked"};
constexpr std::string_view readStyleItems[] = {"Tape", "Stretch"};
constexpr std::string_view routingItems[] = {"Serial", "Parallel", "Per Channel"};
constexpr std::string_view channelModeItems[] = {"Left/Right", "Mid/Side"};
constexpr std::string_view auditionItems[] = {"Output", "Input", "Side Chain"};

/// A parameter whose signal is a gain, shown in dB.
void initialiseLevel(FloatPluginParameter& level, const ParameterCurve& curve)
{
    level.setCurve(curve);
    level.format.shown = {gainToDb, dbToGain};
    level.setUnit(dbUnit);
}

}  // namespace

SordelinParameters::SordelinParameters(GenericParameterOwner& owner, ModulationMatrixOwner& modulation)
    : delays(owner, modulation),
      feedbackLink(&owner, "Feedback Link"),
      delayLink(&owner, "Delay Link"),
      delayReadStyle(&owner, "Delay Buffer Read Style"),
      delayFreeze(&owner, "Delay Freeze"),
      filters(owner, modulation),
      filterRouting(&owner, "Filter Routing"),
      inputLevel(&owner, "Input Level", modulation, SordelinTargets::inputLevel),
      dryLevel(&owner, "Dry Level", modulation, SordelinTargets::dryLevel),
      dryPan(&owner, "Dry Pan", modulation, SordelinTargets::dryPan),
      wetLevel(&owner, "Wet Level", modulation, SordelinTargets::wetLevel),
      wetPan(&owner, "Wet Pan", modulation, SordelinTargets::wetPan),
      channelMode(&owner, "Channel Mode"),
      xyControllers(owner, modulation),
      xlfos(owner, modulation),
      envelopeGenerators(owner, modulation),
      envelopeFollowers(owner, modulation),
      midiSources(owner, modulation),
      receiveMidi(&owner, "Receive Midi"),
      slotParameters(modulation, SordelinTargets::firstSlot, sordelinSourceNames(), sordelinTargetNames()),
      slots(owner, slotParameters, SordelinLimits::slots),
      autoMuteSelfOscillation(&owner, "Auto Mute Self-Osc"),
      auditionSignal(&owner, "Audition Signal"),
      dryEnabled(&owner, "Dry Enabled"),
      filterLinkFrequency(owner, "Filter Link Freq"),
      filterLinkPeak(owner, "Filter Link Peak"),
      modulationOwner(modulation)
{}

void SordelinParameters::initialise()
{
    modulationOwner.configuration = sordelinModulation();
    modulationOwner.slotList = &slots;
    AbstractParameterSetArray* const all[] = {
        &delays,      &filters, &xyControllers, &xlfos, &envelopeGenerators, &envelopeFollowers,
        &midiSources, &slots};
    for (AbstractParameterSetArray* sets : all)
        sets->initialiseSets();
    initialiseSwitches();
    initialiseLevels();
    for (int filter = 0; filter < SordelinLimits::filters; ++filter) {
        filterLinkFrequency.addParameter(filters[filter].frequency);
        filterLinkPeak.addParameter(filters[filter].peak);
    }
}

void SordelinParameters::initialiseSwitches()
{
    feedbackLink.setItems(linkItems, DelayLinkState::Separate);
    feedbackLink.helpText = "Makes both delays use the feedback settings of Delay 1.";
    delayLink.setItems(linkItems, DelayLinkState::Separate);
    delayLink.helpText = "Makes both delays use the time of Delay 1.";
    delayReadStyle.setItems(readStyleItems, DelayLine::ReadType::Tape);
    delayReadStyle.helpText =
        "What a change of time does to the echoes: their pitch bends as on tape, or it stays.";
    delayFreeze.setItems(offOnItems, false);
    delayFreeze.helpText = "Repeats what is in the delays for ever, and lets nothing new in.";
    filterRouting.setItems(routingItems, FilterRouting::Serial);
    filterRouting.helpText = "Sets the filters one behind the other, side by side, or one to each channel.";
    channelMode.setItems(channelModeItems, ChannelMode::LeftRight);
    channelMode.helpText = "Lets the delays work on left and right, or on the middle and the sides.";
    receiveMidi.setItems(disabledEnabledItems, GenericPluginBase::MidiState::Disabled);
    receiveMidi.helpText = "Switches MIDI for this instance.";
    autoMuteSelfOscillation.setItems(offOnItems, false);
    autoMuteSelfOscillation.helpText = "Calms filters that sing by themselves when the input falls silent.";
    auditionSignal.setItems(auditionItems, AuditionSignal::Output);
    auditionSignal.helpText = "What you hear: the effect, the bare input, or the side chain.";
    dryEnabled.setItems(disabledEnabledItems, true);
    dryEnabled.helpText = "Lets the untouched signal through; switch it off on a send.";
}

void SordelinParameters::initialiseLevels()
{
    inputLevel.setRange(-36.0f, 36.0f, 0.0f);
    initialiseLevel(inputLevel, decibelCurve);
    inputLevel.helpText = "How loud the signal goes into the delays.";
    initialiseLevel(dryLevel, levelCurve);
    dryLevel.setRange(0.0f, 1.0f, 1.0f);
    dryLevel.helpText = "How loud the untouched signal is.";
    dryPan.setRange(-1.0f, 1.0f, 0.0f);
    dryPan.helpText = "Places the untouched signal between left and right.";
    initialiseLevel(wetLevel, levelCurve);
    wetLevel.setRange(0.0f, 1.0f, 1.0f);
    wetLevel.helpText = "How loud the echoes are.";
    wetPan.setRange(-1.0f, 1.0f, 0.0f);
    wetPan.helpText = "Places all echoes between left and right.";
}
