#include "product/SordelinChannel.h"

#include "product/SordelinModulationIds.h"

SordelinChannel::SordelinChannel(wave::Environment& environment, const GenericPluginProcessor& processor,
                                 ModulationMatrix& matrix, std::array<DesignFilter*, 2> sharedFilters,
                                 const FilterStyles& styles, int index)
    : ProcessorChannel(environment, processor),
      delayTimeController(environment, *matrix.producerForTarget(SordelinTargets::delayTime(index)),
                          *matrix.producerForTarget(SordelinTargets::delayOffset(index))),
      delayLine(environment),
      loopFilters(environment, sharedFilters, styles, index),
      delayLevel(environment),
      filteredLevel(environment),
      gainAdjuster(environment),
      dryFilter(environment),
      inputRouter(environment, 2),
      feedbackRouter(environment, 2),
      crossFeedbackRouter(environment, 2),
      feedMixer(environment, 3),
      freezeRouter(environment, 2),
      panMixer(environment, 2),
      outputFilters(environment, sharedFilters, styles, index),
      outputMixer(environment, 2),
      outputRouter(environment, 2),
      auditionRouter(environment, 3),
      channelIndex(index)
{
    dryFilter.input = &inputRouter;
    inputRouter.setSource(0, mainInput);
    connectLoop(matrix);
    connectOutput();
}

void SordelinChannel::connectLoop(ModulationMatrix& matrix)
{
    feedMixer.mixerInput(0).source = &inputRouter;
    feedMixer.mixerInput(0).gain.connect(matrix.producerForTarget(SordelinTargets::inputLevel));
    feedMixer.mixerInput(1).source = &gainAdjuster;
    feedMixer.mixerInput(1).gain.connect(&feedbackRouter);
    feedMixer.mixerInput(2).gain.connect(&crossFeedbackRouter);
    // Routers, as a change of the link in the middle of a loop must fade like any other gain.
    feedbackRouter.setSource(0, *matrix.producerForTarget(SordelinTargets::delayFeedback(channelIndex)));
    feedbackRouter.setSource(1, *matrix.producerForTarget(SordelinTargets::delayFeedback(0)));
    crossFeedbackRouter.setSource(
        0, *matrix.producerForTarget(SordelinTargets::delayCrossFeedback(channelIndex)));
    crossFeedbackRouter.setSource(1, *matrix.producerForTarget(SordelinTargets::delayCrossFeedback(0)));

    freezeRouter.setSource(0, feedMixer);
    freezeRouter.setSource(1, delayLine);
    delayLine.input = &freezeRouter;
    delayLine.delayTime.connect(&delayTimeController);

    loopFilters.setInput(delayLine);
    delayLevel.input = &delayLine;
    delayLevel.method.assign(SignalSmoother::SmoothMethod::Rectify);
    filteredLevel.input = &loopFilters.output();
    filteredLevel.method.assign(SignalSmoother::SmoothMethod::Rectify);
    gainAdjuster.input = &loopFilters.output();
    gainAdjuster.unfiltered = &delayLine;
    gainAdjuster.delayLevel = &delayLevel;
    gainAdjuster.filterLevel = &filteredLevel;
}

void SordelinChannel::connectOutput()
{
    panMixer.mixerInput(0).source = &delayLine;
    outputFilters.setInput(panMixer);
    outputMixer.mixerInput(0).source = &dryFilter;
    outputMixer.mixerInput(1).source = &outputFilters.output();
    outputRouter.setSource(0, outputMixer);
    auditionRouter.setSource(0, outputRouter);
    auditionRouter.setSource(1, mainInput);
    auditionRouter.setSource(2, sideChainInput);
    output = &auditionRouter;
}

void SordelinChannel::bindParameters(SordelinParameters& parameters)
{
    DelayParameterSet& delay = parameters.delays[channelIndex];
    delay.sync.bind(delayTimeController.sync);
    delay.feedbackInvert.drive(gainAdjuster.gain);
    parameters.delayReadStyle.bind(delayLine.readType);
    select(parameters.channelMode, inputRouter);
    select(parameters.channelMode, outputRouter);
    select(parameters.feedbackLink, feedbackRouter);
    select(parameters.feedbackLink, crossFeedbackRouter);
    select(parameters.delayFreeze, freezeRouter);
    select(parameters.auditionSignal, auditionRouter);
    open(parameters.dryEnabled, dryFilter.level);
    bindFilters(parameters, loopFilters);
    bindFilters(parameters, outputFilters);
}

void SordelinChannel::bindFilters(SordelinParameters& parameters, FilterCombo& combo)
{
    parameters.filterRouting.bind(combo.routing);
    for (int number = 0; number < SordelinLimits::filters; ++number) {
        FilterParameterSet& controls = parameters.filters[number];
        MultiDesignFilter& filter = combo.filter(number);
        auto choice =
            std::make_shared<ValueAssignableConverter<FilterCharacteristic, int>>(filter.characteristic);
        controls.characteristic.bind(*choice);
        converters.push_back(std::move(choice));
        controls.response.bind(filter.response);
        controls.slope.bind(filter.slope);
        open(controls.enabled, filter.mix);
        parameters.autoMuteSelfOscillation.bind(filter.autoMute);
    }
}

void SordelinChannel::parameterApplied(int) noexcept
{
    const int cleanOnes =
        (loopFilters.filter(0).isClean() ? 1 : 0) + (loopFilters.filter(1).isClean() ? 1 : 0);
    using enum GainAdjuster::Guard;
    gainAdjuster.setGuard(cleanOnes == 0 ? FilterClips : cleanOnes == 1 ? LetSing : Strict);
}
