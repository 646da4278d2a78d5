#include "product/SordelinChannel.h"

#include "product/SordelinModulationIds.h"

SordelinChannel::SordelinChannel(wave::Environment& environment, const GenericPluginProcessor& processor,
                                 ModulationMatrix& matrix, int index)
    : ProcessorChannel(environment, processor),
      delayTimeController(environment, *matrix.producerForTarget(SordelinTargets::delayTime(index)),
                          *matrix.producerForTarget(SordelinTargets::delayOffset(index))),
      delayLine(environment),
      gainAdjuster(environment),
      dryFilter(environment),
      inputRouter(environment, 2),
      feedbackRouter(environment, 2),
      crossFeedbackRouter(environment, 2),
      feedMixer(environment, 3),
      freezeRouter(environment, 2),
      panMixer(environment, 2),
      outputMixer(environment, 2),
      outputRouter(environment, 2),
      auditionRouter(environment, 3),
      channelIndex(index)
{
    dryFilter.input = &inputRouter;
    inputRouter.setSource(0, mainInput);

    feedMixer.mixerInput(0).source = &inputRouter;
    feedMixer.mixerInput(0).gain.connect(matrix.producerForTarget(SordelinTargets::inputLevel));
    feedMixer.mixerInput(1).source = &gainAdjuster;
    feedMixer.mixerInput(1).gain.connect(&feedbackRouter);
    feedMixer.mixerInput(2).gain.connect(&crossFeedbackRouter);
    // Routers, as a change of the link in the middle of a loop must fade like any other gain.
    feedbackRouter.setSource(0, *matrix.producerForTarget(SordelinTargets::delayFeedback(index)));
    feedbackRouter.setSource(1, *matrix.producerForTarget(SordelinTargets::delayFeedback(0)));
    crossFeedbackRouter.setSource(0, *matrix.producerForTarget(SordelinTargets::delayCrossFeedback(index)));
    crossFeedbackRouter.setSource(1, *matrix.producerForTarget(SordelinTargets::delayCrossFeedback(0)));

    freezeRouter.setSource(0, feedMixer);
    freezeRouter.setSource(1, delayLine);
    delayLine.input = &freezeRouter;
    delayLine.delayTime.connect(&delayTimeController);
    gainAdjuster.input = &delayLine;

    panMixer.mixerInput(0).source = &delayLine;
    outputMixer.mixerInput(0).source = &dryFilter;
    outputMixer.mixerInput(1).source = &panMixer;
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

    auto dryGain = std::make_shared<ValueAssignableConverter<bool, float>>(dryFilter.level);
    parameters.dryEnabled.bind(*dryGain);
    converters.push_back(std::move(dryGain));
}
