#include "product/XLFOParameterSet.h"

#include "parameters/FrequencyParameterUnits.h"
#include "parameters/ParameterCurves.h"
#include "product/SordelinModulationIds.h"
#include "product/SwitchItems.h"

namespace {

constexpr std::string_view syncItems[] = {"Free", "16",  "8",   "4",    "2",    "1",
                                          "1/2",  "1/4", "1/8", "1/16", "1/32", "1/64"};
constexpr std::string_view snapItems[] = {"No Snap", "Snap"};
constexpr std::string_view glideCurveItems[] = {"Linear", "Sqr", "Sqrt", "Sine"};
constexpr std::string_view randomItems[] = {"Fixed", "Random"};

}  // namespace

XLFOParameterSet::StepParameterSet::StepParameterSet(XLFOParameterSet& xlfo, int step)
    : PluginParameterSet(xlfo, xlfo.name() + " Step " + std::to_string(step + 1), Grouping::OfOwner),
      value(this, name() + " Value"),
      glide(this, name() + " Glide"),
      glideCurve(this, name() + " Glide function"),
      random(this, name() + " Random")
{}

void XLFOParameterSet::StepParameterSet::initialise()
{
    value.setRange(-1.0f, 1.0f, 0.0f);
    value.helpText = "The level of this step.";
    glide.setRange(0.0f, 1.0f, 0.0f);
    glide.helpText = "The part of the step that is spent gliding to the next one.";
    glideCurve.setItems(glideCurveItems, XLFO::GlideCurve::Linear);
    glideCurve.helpText = "The shape of this step's glide.";
    random.setItems(randomItems, false);
    random.helpText = "Gives the step a new level by chance each time round.";
}

XLFOParameterSet::StepParameterSetList::StepParameterSetList(XLFOParameterSet& xlfo)
    : ParameterSetList<StepParameterSet>(xlfo, xlfo.name() + " Steps")
{
    for (int step = 0; step < SordelinLimits::xlfoSteps; ++step)
        addSet(std::make_unique<StepParameterSet>(xlfo, step));
    numActive.setRange(1, count(), 2);
    numActive.helpText = "The number of steps in the cycle.";
}

XLFOParameterSet::XLFOParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int xlfo)
    : PluginParameterSet(owner, "XLFO " + std::to_string(xlfo + 1)),
      frequency(this, name() + " Frequency", modulation, SordelinTargets::xlfoFrequency(xlfo)),
      frequencyOffset(this, name() + " Frequency Offset"),
      balance(this, name() + " Balance"),
      phaseOffset(this, name() + " Phase Offset", modulation, SordelinTargets::xlfoPhaseOffset(xlfo)),
      glide(this, name() + " Glide", modulation, SordelinTargets::xlfoGlide(xlfo)),
      syncMode(this, name() + " Sync Mode"),
      midiTrigger(this, name() + " MIDI Trigger"),
      snap(this, name() + " Snap"),
      steps(*this)
{}

void XLFOParameterSet::initialise()
{
    frequency.setRange(0.0f, 1.0f, 0.24800393f);  // 1 Hz
    frequency.setCurve(rateCurve);
    frequency.setSignalRange(0.02f, 500.0f);
    frequency.setUnit(hzUnit);
    frequency.helpText = "How many times a second the steps go round.";

    frequencyOffset.setRange(-1.0f, 1.0f, 0.0f);
    frequencyOffset.setCurve(octaveCurve);
    frequencyOffset.helpText =
        "Slows the cycle down to half its speed or doubles it, also when it follows the song.";
    balance.setRange(0.0f, 1.0f, 0.5f);
    balance.helpText = "Gives the first half of the steps more or less of the cycle.";
    phaseOffset.setRange(0.0f, 1.0f, 0.0f);
    phaseOffset.helpText = "Shifts where in the cycle the steps begin.";
    glide.setRange(-1.0f, 1.0f, 0.0f);
    glide.helpText = "Makes all steps glide more, or less, than their own setting.";

    syncMode.setItems(syncItems, XLFOFreqController::SyncMode::Free);
    syncMode.helpText = "Locks the cycle to a number of whole notes of the song, or leaves it to Frequency.";
    midiTrigger.setItems(offOnItems, false);
    midiTrigger.helpText = "Starts the cycle over with every note.";
    snap.setItems(snapItems, false);
    snap.helpText = "Pulls the steps to semitones, for melodies with a filter's frequency.";
    steps.initialiseSets();
}

XLFOParameterSetList::XLFOParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation)
    : SourceParameterSetList<XLFOParameterSet>(owner, "XLFOs", modulation, {SordelinSources::firstXlfo, 1},
                                               {SordelinTargets::firstXlfo, 3})
{
    for (int xlfo = 0; xlfo < SordelinLimits::xlfos; ++xlfo)
        addSet(std::make_unique<XLFOParameterSet>(owner, modulation, xlfo));
    numActive.setRange(0, count(), 0);
    numActive.helpText = "The number of XLFOs in use.";
}
