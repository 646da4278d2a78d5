#include "product/SordelinProcessor.h"

#include "core/DefaultChannelEventReceiver.h"
#include "core/DefaultEventReceiver.h"
#include "product/SordelinInfo.h"
#include "product/SordelinModulationIds.h"

#include <algorithm>

namespace {

/// The tree has to fill the configuration before a matrix can be made of it.
ModulationConfiguration& initialised(SordelinParameters& parameters, ModulationMatrixOwner& owner)
{
    parameters.initialise();
    return owner.configuration;
}

/// The most samples to take at once. A delay line answers a block from what was written before it, so a block
/// may not be longer than the shortest delay, 5 ms, less the two samples that a read between samples looks
/// at; below 26 kHz that is less than the engine's own limit.
int blockForRate(const wave::Environment& environment)
{
    return std::clamp(static_cast<int>(environment.sampleRate() * 0.005f) - 2, 1, environment.maxBlockSize());
}

}  // namespace

SordelinProcessor::SordelinProcessor()
    : SordelinParameters(static_cast<GenericPluginBase&>(*this), *this),
      modulationMatrix(environment, initialised(*this, *this)),
      modulationDisplay(environment, modulationMatrix,
                        [this](int source) { return modulationSourceValue(source); }),
      xySources(environment, modulationMatrix, xyControllers),
      xlfoSources(environment, modulationMatrix, xlfos),
      midSideEncoder(environment),
      midSideDecoder(environment),
      filterTargets{{environment, modulationMatrix, SordelinTargets::filterFrequency(0),
                     SordelinTargets::filterPan(0), LevelPanTarget::Mode::Add},
                    {environment, modulationMatrix, SordelinTargets::filterFrequency(1),
                     SordelinTargets::filterPan(1), LevelPanTarget::Mode::Add}},
      dryTarget(environment, modulationMatrix, SordelinTargets::dryLevel, SordelinTargets::dryPan,
                LevelPanTarget::Mode::Multiply),
      wetTarget(environment, modulationMatrix, SordelinTargets::wetLevel, SordelinTargets::wetPan,
                LevelPanTarget::Mode::Multiply),
      mainPeakMixer(environment, 2, Mixer::Operation::LargestMagnitude),
      sideChainPeakMixer(environment, 2, Mixer::Operation::LargestMagnitude),
      envelopeSources(environment, modulationMatrix, envelopeGenerators, envelopeFollowers,
                      {mainPeakMixer, sideChainPeakMixer}),
      midiModulation(environment, modulationMatrix, midiSources),
      inputGate(environment, 20.0f, 0.005f),
      sharedFilters{{environment, filterResources.resources.tables, filterResources.resources.styles.at(0)},
                    {environment, filterResources.resources.tables, filterResources.resources.styles.at(0)}},
      engineBlock(blockForRate(environment))
{
    static_cast<GenericPluginInfo&>(*this) = sordelinInfo();
    midiStateParameter = &receiveMidi;
    matrix = &modulationMatrix;
    createEngine();
    midSideEncoder.conversion.assign(MidSideConverter::Conversion::Encode);
    midSideDecoder.conversion.assign(MidSideConverter::Conversion::Decode);
    buildChannels();
    wave::MemoryTrail& trail = environment.memoryTrail();
    for (const SordelinChannel* made : sordelinChannels)
        trail.addRange(made, sizeof(SordelinChannel));
    trail.addRange(&filterTargets, sizeof(filterTargets));
    trail.addRange(&sharedFilters, sizeof(sharedFilters));
    connectChannels();
    bindParameters();
    // What the tree holds is what the graph plays from the first sample.
    deliverAll();
}

SordelinProcessor::~SordelinProcessor()
{
    environment.markDestroying();
    channels.clear();  // their filters leave the shared ones, which are members here
}

void SordelinProcessor::buildChannels()
{
    for (int c = 0; c < 2; ++c) {
        auto made = std::make_unique<SordelinChannel>(environment, *this, modulationMatrix,
                                                      std::array{&sharedFilters[0], &sharedFilters[1]},
                                                      filterResources.resources.styles, c);
        sordelinChannels[static_cast<std::size_t>(c)] = made.get();
        channels.push_back(std::move(made));
        delayPanControllers[static_cast<std::size_t>(c)] = std::make_unique<DelayPanController>(
            environment, *modulationMatrix.producerForTarget(SordelinTargets::delayPan(c)));
    }
}

void SordelinProcessor::connectChannels()
{
    for (int c = 0; c < 2; ++c) {
        SordelinChannel& own = channel(c);
        SordelinChannel& other = channel(1 - c);
        midSideEncoder.setInput(c, own.mainInput);
        midSideDecoder.setInput(c, own.outputMixer);
        own.inputRouter.setSource(1, midSideEncoder.output(c));
        own.outputRouter.setSource(1, midSideDecoder.output(c));
        own.feedMixer.mixerInput(2).source = &other.gainAdjuster;
        own.panMixer.mixerInput(1).source = &other.delayLine;
        own.panMixer.mixerInput(0).gain.connect(&delayPanControllers[static_cast<std::size_t>(c)]->output(c));
        own.panMixer.mixerInput(1).gain.connect(
            &delayPanControllers[static_cast<std::size_t>(1 - c)]->output(c));
        own.outputMixer.mixerInput(0).gain.connect(&dryTarget.output(c));
        own.outputMixer.mixerInput(1).gain.connect(&wetTarget.output(c));
        mainPeakMixer.mixerInput(c).source = &own.mainInput;
        sideChainPeakMixer.mixerInput(c).source = &own.sideChainInput;
        connectFilters(own.loopFilters, c);
        connectFilters(own.outputFilters, c);
    }
    inputGate.input = &mainPeakMixer;
    sharedFilters[1].follow(sharedFilters[0]);
}

void SordelinProcessor::connectFilters(FilterCombo& combo, int channelIndex)
{
    for (int number = 0; number < SordelinLimits::filters; ++number) {
        MultiDesignFilter& filter = combo.filter(number);
        filter.frequency.connect(&filterTargets[number].output(channelIndex));
        filter.peak.connect(modulationMatrix.producerForTarget(SordelinTargets::filterPeak(number)));
        filter.gate = &inputGate;
    }
}

void SordelinProcessor::bindParameters()
{
    for (SordelinChannel* bound : sordelinChannels)
        bound->bindParameters(*this);
    delayLink.bind(delayLinkSwitch);
}

void SordelinProcessor::process(const float* const* inputs, int inputCount, float* const* outputs,
                                int outputCount, int frames, unsigned& status) noexcept
{
    GenericPluginProcessor::process(inputs, inputCount, outputs, outputCount, frames, status);
    modulationDisplay.update();
}

void SordelinProcessor::writeDisplayData(BinaryDataWriter& writer)
{
    GenericPluginProcessor::writeDisplayData(writer);
    modulationDisplay.collect(writer);
}

std::unique_ptr<AbstractMusicEventReceiver> SordelinProcessor::createMusicEventReceiver()
{
    auto receiver = std::make_unique<DefaultChannelEventReceiver>(*this);
    receiver->addListener(midiModulation.listener());
    return std::make_unique<DefaultEventReceiver>(std::move(receiver));
}

void SordelinProcessor::noteOn(int key, float) noexcept
{
    if (key != 0)
        xlfoSources.noteOn();
    envelopeSources.noteOn(key);
}

void SordelinProcessor::noteOff(int key, float) noexcept { envelopeSources.noteOff(key); }

float SordelinProcessor::modulationSourceValue(int source) noexcept
{
    if (source < SordelinSources::firstXlfo)
        return xySources.displayValue(source);
    if (source < SordelinSources::firstGenerator)
        return xlfoSources.displayValue(source);
    if (source < SordelinSources::firstMidi)
        return envelopeSources.displayValue(source);
    return midiModulation.displayValue(source);
}

void SordelinProcessor::propertyChanged(AbstractProperty&)
{
    // The line glides or stretches to the other time as after any other change.
    const bool linked = delayLinkSwitch.value() == DelayLinkState::Linked;
    channel(1).delayLine.delayTime.connect(&channel(linked ? 0 : 1).delayTimeController);
}

void SordelinProcessor::transportChanged(float newTempo, double beats) noexcept
{
    xlfoSources.transportChanged(newTempo, beats);
    for (SordelinChannel* synchronised : sordelinChannels)
        synchronised->delayTimeController.tempoChanged(newTempo);
}

void SordelinProcessor::parameterApplied(int index) noexcept
{
    GenericPluginProcessor::parameterApplied(index);
    xlfoSources.parameterApplied(index);
    envelopeSources.parameterApplied(index);
}

void SordelinProcessor::sampleRateChanged()
{
    engineBlock = blockForRate(environment);
    GenericPluginProcessor::sampleRateChanged();
}
