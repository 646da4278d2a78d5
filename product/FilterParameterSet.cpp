#include "product/FilterParameterSet.h"

#include "parameters/FrequencyParameterUnits.h"
#include "product/SordelinModulationIds.h"
#include "product/SwitchItems.h"

namespace {

constexpr std::string_view characteristicItems[] = {"Morvelane Prime", "Gentle",     "Raw",    "Tube",
                                                    "Metal",           "Easy Going", "Smooth", "Hard",
                                                    "Hollow",          "Extreme",    "Clean"};
constexpr std::string_view responseItems[] = {"LP", "HP", "BP"};
constexpr std::string_view slopeItems[] = {"12", "24", "48"};

// The pan spreads the cut-offs of the channels by up to 3.5 octaves each way, but reads as -1 to 1.
float panToShown(float octaves) noexcept { return octaves * 0.2857143f; }
float shownToPan(float shown) noexcept { return shown * 3.5f; }

}  // namespace

FilterParameterSet::FilterParameterSet(GenericParameterOwner& owner, ModulationMatrixOwner& modulation,
                                       int filter)
    : PluginParameterSet(owner, "Filter " + std::to_string(filter + 1)),
      frequency(this, name() + " Freq", modulation, SordelinTargets::filterFrequency(filter)),
      pan(this, name() + " Pan", modulation, SordelinTargets::filterPan(filter)),
      peak(this, name() + " Peak", modulation, SordelinTargets::filterPeak(filter)),
      characteristic(this, name() + " Characteristic"),
      response(this, name() + " Response"),
      slope(this, name() + " Slope"),
      enabled(this, name() + " Enabled")
{}

void FilterParameterSet::initialise()
{
    frequency.setRange(0.0f, 1.0f, 1.0f);
    frequency.setSignalRange(2.2666f, 16.2064f);  // 4.8 Hz to 75.6 kHz
    frequency.setUnit(expFreqUnit);
    frequency.helpText = "Where the filter begins to cut.";

    pan.setRange(-3.5f, 3.5f, 0.0f);
    pan.format.shown = {panToShown, shownToPan};
    pan.helpText = "Moves the cut-off up on one side and down on the other.";

    peak.setRange(0.0f, 1.0f, 0.0f);
    peak.helpText = "How much the filter rings at its cut-off; turned far up, it sings by itself.";

    characteristic.setItems(characteristicItems, FilterCharacteristic::Gentle);
    characteristic.helpText = "The colour of the filter, from clean to torn.";
    response.setItems(responseItems, FilterResponse::LowPass);
    response.helpText = "What the filter lets through: the lows, the highs, or a band around its cut-off.";
    slope.setItems(slopeItems, FilterSlope::Db12, static_cast<int>(FilterSlope::Db12));
    slope.helpText = "How steeply the filter cuts, in decibels per octave.";
    enabled.setItems(disabledEnabledItems, true);
    enabled.helpText = "Switches the filter in or out.";
}

FilterParameterSetArray::FilterParameterSetArray(GenericParameterOwner& owner,
                                                 ModulationMatrixOwner& modulation)
{
    for (int filter = 0; filter < SordelinLimits::filters; ++filter)
        addSet(std::make_unique<FilterParameterSet>(owner, modulation, filter));
}
