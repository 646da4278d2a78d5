#pragma once

#include "core/ProcessorChannel.h"
#include "dsp/DelayLine.h"
#include "dsp/GainAdjuster.h"
#include "dsp/SignalSmoother.h"
#include "dsp/VolumeFilter.h"
#include "modulation/Mixer.h"
#include "modulation/ModulationMatrix.h"
#include "modulation/Router.h"
#include "product/DelayTimeController.h"
#include "product/FilterCombo.h"
#include "product/SordelinParameters.h"

#include <array>
#include <memory>
#include <vector>

/// One channel of the product's signal path. Thread: audio, but for construction and wiring.
class SordelinChannel : public ProcessorChannel {
public:
    SordelinChannel(wave::Environment& environment, const GenericPluginProcessor& processor,
                    ModulationMatrix& matrix, std::array<DesignFilter*, 2> sharedFilters,
                    const FilterStyles& styles, int index);

    /// Lets the channel's parts follow the parameters. Thread: main.
    void bindParameters(SordelinParameters& parameters);

    void parameterApplied(int index) noexcept REALTIME override;

    DelayTimeController delayTimeController;
    DelayLine delayLine;
    FilterCombo loopFilters;       // in the feedback
    SignalSmoother delayLevel;     // before the loop's filters
    SignalSmoother filteredLevel;  // behind them
    GainAdjuster gainAdjuster;     // what the feedback of both channels takes
    VolumeFilter dryFilter;
    Router inputRouter;     // left/right or mid/side
    Router feedbackRouter;  // own gain or the first delay's
    Router crossFeedbackRouter;
    Mixer feedMixer;      // input, own feedback, the other channel's
    Router freezeRouter;  // feed or the line's own output
    Mixer panMixer;       // own and the other delay
    FilterCombo outputFilters;
    Mixer outputMixer;      // dry and wet
    Router outputRouter;    // left/right or mid/side
    Router auditionRouter;  // output, input or side chain

private:
    void connectLoop(ModulationMatrix& matrix);
    void connectOutput();
    void bindFilters(SordelinParameters& parameters, FilterCombo& combo);

    /// Makes a switch choose the input of a router.
    template <class T>
    void select(IndexedPluginParameter<T>& parameter, Router& router)
    {
        auto converter = std::make_shared<ValueAssignableConverter<T, int>>(router.index);
        parameter.bind(*converter);
        converters.push_back(std::move(converter));
    }

    /// Hands a switch on as a gain of 0 or 1.
    void open(IndexedPluginParameter<bool>& parameter, ValueAssignable<float>& gain)
    {
        auto converter = std::make_shared<ValueAssignableConverter<bool, float>>(gain);
        parameter.bind(*converter);
        converters.push_back(std::move(converter));
    }

    std::vector<std::shared_ptr<void>> converters;  // kept alive; of several types
    int channelIndex;
};
