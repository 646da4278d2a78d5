#include "product/MidiSourceParameterSet.h"

#include "product/SordelinModulationIds.h"

namespace {

constexpr std::string_view inputItems[] = {"Mod Wheel",  "Pitch Bend", "Velocity",
                                           "Aftertouch", "KB Track",   "Controller"};
constexpr std::string_view curveItems[] = {"Linear", "Exp", "Log", "Sqr", "Sqrt", "Sine"};
constexpr int highestController = 127;

}  // namespace

MidiSourceParameterSet::MidiSourceParameterSet(GenericParameterOwner& owner, int source)
    : PluginParameterSet(owner, "MIDI Source " + std::to_string(source + 1)),
      input(this, name() + " Input"),
      controllerNumber(this, name() + " Controller Number"),
      responseCurve(this, name() + " Response Curve")
{}

void MidiSourceParameterSet::initialise()
{
    input.setItems(inputItems, MidiModSource::MidiInput::ModWheel);
    input.helpText = "What is followed: a wheel, the keys, or any controller.";
    controllerNumber.setRange(0, highestController, 0);
    controllerNumber.helpText = "The number of the controller, when Input is Controller.";
    responseCurve.setItems(curveItems, MidiModSource::ResponseCurve::Linear);
    responseCurve.helpText = "How the source answers to small and large moves.";
}

MidiSourceParameterSetList::MidiSourceParameterSetList(GenericParameterOwner& owner,
                                                       ModulationMatrixOwner& modulation)
    : SourceParameterSetList<MidiSourceParameterSet>(owner, "MIDI Sources", modulation,
                                                     {SordelinSources::firstMidi, 1}, {0, 0})
{
    for (int source = 0; source < SordelinLimits::midiSources; ++source)
        addSet(std::make_unique<MidiSourceParameterSet>(owner, source));
    numActive.setRange(0, count(), 0);
    numActive.helpText = "The number of MIDI sources in use.";
}
