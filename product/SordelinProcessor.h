#pragma once

#include "core/GenericPluginProcessor.h"
#include "dsp/FilterAnalyzer.h"
#include "dsp/MidSideConverter.h"
#include "modulation/LevelPanTarget.h"
#include "modulation/Mixer.h"
#include "modulation/ModulationDisplay.h"
#include "modulation/ModulationMatrix.h"
#include "product/DelayPanController.h"
#include "product/EnvelopeSources.h"
#include "product/FilterResources.h"
#include "product/MidiSources.h"
#include "product/SordelinChannel.h"
#include "product/SordelinParameters.h"
#include "product/XLFOSources.h"
#include "product/XYSources.h"

#include <array>
#include <memory>

/// The product's audio half: one graph for the whole stereo path. Per channel c, with o the other one:
///
///   input c --+--> coding --+------------------------------> dry on/off -------------------- * dry c ---+
///             |             |                                                                           v
///             |             +--> * input level --> feed --> freeze --> delay c --+--> * pan ---------> wet c
///             |                                     ^  ^        ^                |     ^                |
///             |                * feedback ----------+  |        +---- delay c ---+     delay o * pan    |
///             |                * cross feedback -------+                         |                      v
///             |                     ^                                            |              sum of dry
///             and wet |                     +--- G c, G o <--- loop gain <---------------+ | | v
///             +------------------------------> audition <--------------------------------------- decoding
///             --> out c
///
/// What is to the left of a delay runs in the second pass, when both delays have been read.
class SordelinProcessor : public GenericPluginProcessor,
                          public ModulationMatrixOwner,
                          public SordelinParameters,
                          public PropertyOwner {
public:
    SordelinProcessor();
    ~SordelinProcessor() override;

    /// An echo may come at any time: a silent output says nothing.
    bool outputsSilent(const float* const*, int, int) const noexcept REALTIME override { return false; }

    void process(const float* const* inputs, int inputCount, float* const* outputs, int outputCount,
                 int frames, unsigned& status) noexcept REALTIME override;

    /// Notes start XLFOs and envelopes. Key 0 isn't played: it stands for all keys, which are let go.
    void noteOn(int key, float velocity) noexcept REALTIME override;
    void noteOff(int key, float velocity) noexcept REALTIME override;

    /// Also where targets and sources stand.
    void writeDisplayData(BinaryDataWriter& writer) override;
    void requestModulationDisplay() override { modulationDisplay.request(); }
    /// Where a source stands, as 0..1.
    float modulationSourceValue(int source) noexcept REALTIME;

    /// A link was switched. Thread: audio.
    void propertyChanged(AbstractProperty& property) override;

protected:
    int blockSize() const noexcept REALTIME override { return engineBlock; }
    void transportChanged(float newTempo, double beats) noexcept REALTIME override;
    void parameterApplied(int index) noexcept REALTIME override;
    std::unique_ptr<AbstractMusicEventReceiver> createMusicEventReceiver() override;
    void sampleRateChanged() override;

private:
    SordelinChannel& channel(int index) noexcept REALTIME
    {
        return *sordelinChannels[static_cast<std::size_t>(index)];
    }
    void buildChannels();
    void connectChannels();
    void connectFilters(FilterCombo& combo, int channelIndex);
    void bindParameters();

    ModulationMatrix modulationMatrix;
    ModulationDisplay modulationDisplay;
    XYSources xySources;
    XLFOSources xlfoSources;
    MidSideConverter midSideEncoder;
    MidSideConverter midSideDecoder;
    LevelPanTarget filterTargets[2];  // cut-offs, spread over the channels by the filter's pan
    LevelPanTarget dryTarget;
    LevelPanTarget wetTarget;
    std::array<std::unique_ptr<DelayPanController>, 2> delayPanControllers;
    Mixer mainPeakMixer;       // the larger of the two inputs
    Mixer sideChainPeakMixer;  // the same of the side chain
    EnvelopeSources envelopeSources;
    MidiSources midiModulation;
    FilterAnalyzer inputGate;  // whether something comes in
    FilterResourcesHold filterResources;
    DesignFilter sharedFilters[2];  // one for each filter number; its lanes are two channels, in the loop and
                                    // on the way out
    std::array<SordelinChannel*, 2> sordelinChannels{};  // owned by the base's list
    Property<DelayLinkState> delayLinkSwitch{DelayLinkState::Separate, this};
    int engineBlock;  // samples
};
