#include "product/EGParameterSet.h"

#include "dsp/Conversions.h"
#include "parameters/DBParameterUnits.h"
#include "parameters/ParameterCurves.h"
#include "parameters/TimeParameterUnits.h"
#include "product/SordelinModulationIds.h"

namespace {

constexpr std::string_view triggeringItems[] = {"Normal Input", "Side Chain", "MIDI"};

void initialiseTime(FloatPluginParameter& time, float longestSeconds)
{
    time.setRange(0.0f, 1.0f, 0.0f);
    time.setCurve(knobCurve);
    time.setSignalRange(0.0f, longestSeconds);
    time.setUnit(secUnit);
}

}  // namespace

EGParameterSet::EGParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int generator)
    : PluginParameterSet(owner, "EG " + std::to_string(generator + 1)),
      hold(this, name() + " Hold", modulation, SordelinTargets::generatorHold(generator)),
      delay(this, name() + " Delay", modulation, SordelinTargets::generatorDelay(generator)),
      threshold(this, name() + " Threshold"),
      triggering(this, name() + " Triggering"),
      attack(this, name() + " Attack", modulation, SordelinTargets::generatorAttack(generator)),
      decay(this, name() + " Decay", modulation, SordelinTargets::generatorDecay(generator)),
      sustain(this, name() + " Sustain", modulation, SordelinTargets::generatorSustain(generator)),
      release(this, name() + " Release", modulation, SordelinTargets::generatorRelease(generator))
{}

void EGParameterSet::initialise()
{
    initialiseTime(hold, 19.0f);
    hold.helpText = "The shortest time for which the envelope stays open once it is triggered.";
    initialiseTime(delay, 5.0f);
    delay.helpText = "The time between the trigger and the start of the envelope.";

    threshold.setRange(0.0f, 1.0f, 0.27976302f);  // -24 dB
    threshold.setCurve(knobCurve);
    threshold.format.shown = {gainToDb, dbToGain};
    threshold.setUnit(dbUnit);
    threshold.helpText = "How loud the signal must get to trigger the envelope.";
    triggering.setItems(triggeringItems, Triggering::NormalInput);
    triggering.helpText = "What triggers the envelope: the input, the side chain, or notes.";

    initialiseTime(attack, 3.0f);
    attack.helpText = "How long the envelope takes to open.";
    initialiseTime(decay, 5.0f);
    decay.helpText = "How long it takes to fall from the top to the sustain level.";
    sustain.setRange(0.0f, 1.0f, 1.0f);
    sustain.format.shown = {gainToDb, dbToGain};
    sustain.setUnit(dbUnit);
    sustain.helpText = "The level at which the envelope waits until it is let go.";
    initialiseTime(release, 5.0f);
    release.helpText = "How long the envelope takes to close when it is let go.";
}

EGParameterSetList::EGParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation)
    : SourceParameterSetList<EGParameterSet>(owner, "EGs", modulation, {SordelinSources::firstGenerator, 1},
                                             {SordelinTargets::firstGenerator, 6})
{
    for (int generator = 0; generator < SordelinLimits::envelopeGenerators; ++generator)
        addSet(std::make_unique<EGParameterSet>(owner, modulation, generator));
    numActive.setRange(0, count(), 0);
    numActive.helpText = "The number of envelope generators in use.";
}
