#include "product/DelayParameterSet.h"

#include "parameters/ParameterCurves.h"
#include "parameters/TimeParameterUnits.h"
#include "product/SordelinModulationIds.h"

namespace {

constexpr std::string_view syncItems[] = {"Free", "Two Notes", "Note", "Half Note", "Quarter Note"};
constexpr std::string_view invertItems[] = {"Normal", "Inverted"};
constexpr float invertFactors[] = {1.0f, -1.0f};

}  // namespace

DelayParameterSet::DelayParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation,
                                     int delay)
    : PluginParameterSet(owner, "Delay " + std::to_string(delay + 1)),
      time(this, name() + " Time", modulation, SordelinTargets::delayTime(delay)),
      offset(this, name() + " Offset", modulation, SordelinTargets::delayOffset(delay)),
      sync(this, name() + " Sync"),
      feedback(this, name() + " Feedback", modulation, SordelinTargets::delayFeedback(delay)),
      crossFeedback(this, name() + " Cross Feedback", modulation, SordelinTargets::delayCrossFeedback(delay)),
      feedbackInvert(this, name() + " Feedback Invert"),
      pan(this, name() + " Pan", modulation, SordelinTargets::delayPan(delay))
{}

void DelayParameterSet::initialise()
{
    time.setRange(0.0f, 1.0f, 0.29333879f);  // 350 ms
    time.setCurve(knobCurve);
    time.setSignalRange(5.0f, 5000.0f);
    time.setUnit(msUnit);
    time.format.numberFormat = "%.1f";
    time.helpText = "How long the delay waits before it plays back what it heard.";

    offset.setRange(-1.0f, 1.0f, 0.0f);
    offset.setCurve(octaveCurve);
    offset.helpText = "Shortens or lengthens a delay that follows the song, from half to twice its note.";

    sync.setItems(syncItems, DelaySync::Free);
    sync.helpText = "Locks the delay time to the song's tempo, or leaves it to the Time control.";

    feedback.setRange(0.0f, 1.0f, 0.0f);
    feedback.setCurve(knobCurve);
    feedback.setSignalRange(0.0f, 2.0f);
    feedback.helpText = "How much of the echo goes back into the same delay, and so how many echoes follow.";

    crossFeedback.setRange(0.0f, 1.0f, 0.0f);
    crossFeedback.setCurve(knobCurve);
    crossFeedback.helpText =
        "How much of the other delay's echo goes into this one; ping-pong delays live on it.";

    feedbackInvert.setItems(invertItems, FeedbackInvert::Normal);
    feedbackInvert.setSignals(invertFactors);
    feedbackInvert.helpText = "Turns the polarity of the feedback around, for a hollower row of echoes.";

    pan.setRange(-1.0f, 1.0f, 0.0f);
    pan.helpText = "Places the echoes between left and right.";
}

DelayParameterSetArray::DelayParameterSetArray(GenericParameterOwner& owner,
                                               ModulationMatrixOwner& modulation)
{
    for (int delay = 0; delay < SordelinLimits::delays; ++delay)
        addSet(std::make_unique<DelayParameterSet>(owner, modulation, delay));
}
