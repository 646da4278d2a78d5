#include "product/EFParameterSet.h"

#include "parameters/ParameterCurves.h"
#include "parameters/TimeParameterUnits.h"
#include "product/SordelinModulationIds.h"

namespace {

constexpr std::string_view inputItems[] = {"Normal Input", "Side Chain"};

void initialiseTime(FloatPluginParameter& time, float shortestSeconds, float longestSeconds)
{
    time.setRange(0.0f, 1.0f, 0.0f);
    time.setCurve(followerCurve);
    time.setSignalRange(shortestSeconds, longestSeconds);
    time.setUnit(secUnit);
}

}  // namespace

// The blank that "Input" lacks stays away: presets know the parameter by this name.
EFParameterSet::EFParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation, int follower)
    : PluginParameterSet(owner, "EF " + std::to_string(follower + 1)),
      input(this, name() + "Input"),
      attack(this, name() + " Attack", modulation, SordelinTargets::followerAttack(follower)),
      release(this, name() + " Release", modulation, SordelinTargets::followerRelease(follower))
{}

void EFParameterSet::initialise()
{
    input.setItems(inputItems, GenericPluginBase::InputSignal::NormalInput);
    input.helpText = "The signal whose loudness is followed.";
    initialiseTime(attack, 0.001f, 1.0f);
    attack.helpText = "How fast the follower rises with the signal.";
    initialiseTime(release, 0.05f, 5.0f);
    release.helpText = "How slowly the follower falls when the signal does.";
}

EFParameterSetList::EFParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation)
    : SourceParameterSetList<EFParameterSet>(owner, "EFs", modulation, {SordelinSources::firstFollower, 1},
                                             {SordelinTargets::firstFollower, 2})
{
    for (int follower = 0; follower < SordelinLimits::envelopeFollowers; ++follower)
        addSet(std::make_unique<EFParameterSet>(owner, modulation, follower));
    numActive.setRange(0, count(), 0);
    numActive.helpText = "The number of envelope followers in use.";
}
