#include "product/SordelinPresetLoader.h"

#include "modulation/ModMatrixParamController.h"
#include "modulation/SlotOperations.h"
#include "parameters/ParameterCurves.h"
#include "product/SordelinModulationIds.h"
#include "product/SordelinPlugin.h"

#include <algorithm>
#include <span>
#include <vector>

namespace {

enum Version { FirstProduct = 1, PreviousProduct = 2, BeforeFreeze = 3, OldDepths = 4 };

/// The fields of an LFO as old files hold them. A seventh one, in the later of the two, has no counterpart.
enum OldLfoField { Frequency, Wave, FrequencyOffset, SyncLength, IsSynced, MidiTrigger };

/// The shapes of an old LFO.
enum OldWave { Sine = 1, Triangle, Sawtooth, Square };

/// A shape as two steps. Steps glide to each other over the whole of their length, or not at all.
struct WaveSteps {
    float firstValue;
    float secondValue;
    float firstGlide;
    float secondGlide;
    XLFO::GlideCurve curve;
    float balance;
    float phaseOffset;  // cycles
};

// By OldWave - 1. A glide on the sine curve is half a cosine, from -1 up to 1; a quarter of a cycle later it
// is a sine that begins at 0, and a straight one a triangle that does. The sawtooth rises over a first step
// that takes the whole cycle; the engine leaves a ten-thousandth for the way back.
constexpr WaveSteps waveSteps[] = {
    {-1.0f, 1.0f, 1.0f, 1.0f, XLFO::GlideCurve::Sine, 0.5f, 0.25f},
    {-1.0f, 1.0f, 1.0f, 1.0f, XLFO::GlideCurve::Linear, 0.5f, 0.25f},
    {-1.0f, 1.0f, 1.0f, 0.0f, XLFO::GlideCurve::Linear, 1.0f, 0.0f},
    {1.0f, -1.0f, 0.0f, 0.0f, XLFO::GlideCurve::Linear, 0.5f, 0.0f},
};

constexpr int longestSync = 10;  // of the lengths that an old LFO could follow, from 0

constexpr int firstSources[] = {8, 9, 24, 25};
constexpr int previousSources[] = {8, 9, 14, 24, 25, 26, 27, 28};
constexpr int firstTargets[] = {0, 1, 5, 6, 2, -1, 3, -1, 10, 11, 12, 13, 14, 15, 16, 19, 78, 79, 80, 81, 82};
constexpr int previousTargets[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,
                                   14, 15, 16, 19, 36, 37, 38, 39, 78, 79, 80, 81, 82};

constexpr MidiModSource::MidiInput firstMidiInputs[] = {MidiModSource::MidiInput::PitchBend,
                                                        MidiModSource::MidiInput::ModWheel};
constexpr MidiModSource::MidiInput previousMidiInputs[] = {
    MidiModSource::MidiInput::PitchBend, MidiModSource::MidiInput::ModWheel,
    MidiModSource::MidiInput::Velocity, MidiModSource::MidiInput::Aftertouch,
    MidiModSource::MidiInput::KeyboardTrack};

constexpr int firstSlots = 21;
constexpr int previousSlots = 24;

constexpr float oldFollowerDepth = 0.5f;  // of today's, on a feedback
constexpr float oldSnappedDepth = 4.2f;   // likewise, octaves on a filter's frequency

/// A change of what a MIDI source does to a target.
struct Rescale {
    MidiModSource::MidiInput input;
    int target;  // its id, or -1 for all
    float from;
    float to;
};

// In the order in which they are made.
constexpr Rescale midiRescales[] = {
    {MidiModSource::MidiInput::Velocity, -1, 1.0f, 2.0f},
    {MidiModSource::MidiInput::Velocity, 0, 2.0f, 1.0f},
    {MidiModSource::MidiInput::Velocity, 6, 2.0f, 1.0f},
    {MidiModSource::MidiInput::Velocity, 5, 5.0f, 7.0f},
    {MidiModSource::MidiInput::PitchBend, 16, 1.0f, 2.0f},
    {MidiModSource::MidiInput::PitchBend, 5, 10.0f, 7.0f},
    {MidiModSource::MidiInput::PitchBend, 11, 1.0f, 2.0f},
    {MidiModSource::MidiInput::PitchBend, 12, 1.0f, 2.0f},
    {MidiModSource::MidiInput::PitchBend, 13, 1.0f, 2.0f},
    {MidiModSource::MidiInput::KeyboardTrack, 0, 1.51260507f, 1.0f},
    {MidiModSource::MidiInput::KeyboardTrack, 16, 5.04201698f, 2.0f},
    {MidiModSource::MidiInput::KeyboardTrack, 6, 60.50419998f, 25.0f},
    {MidiModSource::MidiInput::KeyboardTrack, 5, 5.0f, 7.0f},
    {MidiModSource::MidiInput::KeyboardTrack, 11, 3.02520919f, 1.5f},
    {MidiModSource::MidiInput::KeyboardTrack, 12, 5.04201651f, 2.5f},
    {MidiModSource::MidiInput::KeyboardTrack, 13, 5.04201651f, 2.5f},
    {MidiModSource::MidiInput::ModWheel, 5, 10.0f, 7.0f},
};

void set(AbstractPluginParameter& parameter, float value) { parameter.setValue(value, announceChange); }

template <class T>
void setItem(IndexedPluginParameter<T>& parameter, T raw)
{
    set(parameter, static_cast<float>(parameter.format.positionOfRaw(static_cast<int>(raw))));
}

/// How much of a value that was shared by both delays this one had. @param balance  -1..1, first to second
float balanceFactor(int delay, float balance)
{
    return delay == 0 ? 1.0f - std::max(balance, 0.0f) : 1.0f + std::min(balance, 0.0f);
}

/// The first active MIDI source with this input, or -1.
int findMidiSource(const MidiSourceParameterSetList& sources, MidiModSource::MidiInput input)
{
    for (int i = 0; i < sources.numActive.value(); ++i)
        if (sources[i].input.value() == input)
            return i;
    return -1;
}

}  // namespace

/// What the numbers of sources and targets in old slots mean today. Targets above the table are slots'
/// levels.
struct OldModulationTables {
    std::span<const int> sources;
    std::span<const int> targets;
    int slots;

    int sourceOf(int old) const
    {
        const auto place = static_cast<std::size_t>(old);
        return place < sources.size() ? sources[place] : -1;
    }
    int targetOf(int old) const
    {
        const auto place = static_cast<std::size_t>(old);
        if (place < targets.size())
            return targets[place];
        const int slot = static_cast<int>(place - targets.size());
        return slot < slots ? SordelinTargets::slotLevel(slot) : -1;
    }
};

SordelinPresetLoader::SordelinPresetLoader(SordelinPlugin& sordelinPlugin)
    : CustomPresetLoader(sordelinPlugin.storedParameters, sordelinPlugin), sordelin(sordelinPlugin)
{}

std::string SordelinPresetLoader::signature(int presetVersion) const
{
    switch (presetVersion) {
    case FirstProduct:
        return "MDly";
    case PreviousProduct:
        return "MSlg";
    default:
        return CustomPresetLoader::signature(presetVersion);
    }
}

bool SordelinPresetLoader::acceptsVersion(int presetVersion)
{
    return presetVersion >= FirstProduct && presetVersion <= OldDepths;
}

void SordelinPresetLoader::beginLoad(int presetVersion)
{
    for (int i = 0; i < sordelin.parameterCount(); ++i)
        set(sordelin.parameter(i), sordelin.parameter(i).defaultValue());
    beginValueMap(presetVersion);
    if (presetVersion == OldDepths)
        mapAllParameters();
    else if (presetVersion == BeforeFreeze)
        mapAllParameters(&sordelin.delayFreeze);
    else
        mapOldValues(presetVersion);
}

// The values of the two older products, in the order of their files:
//
//   Values                                                first product   previous product
//   each delay: time, offset, sync                             6                6
//     and feedback, cross feedback, pan                        -                6
//   feedback link                                              -                1
//   delay link, read style                                     2                2
//   routing with four feedback values, or both filters' 7      5               15
//     fields and the routing
//   input, dry and wet levels and pans                         5                5
//   both filters' 7 fields                                    14                -
//   each LFO: 6 or 7 fields                                   12               14
//   an envelope: threshold, triggering, and its four stages    -                6
//   receive MIDI                                               1                1
//   each of 21 or 24 slots: 5 fields                         105              120
//                                                            150              176
//   a time for each delay, auto mute, dry                                       4
//                                                                             180
//
// A delay of that time had no feedback inversion and a filter had all that it has today, which is what makes
// the sums come out. The envelope is the one that the slots of the previous product have as a source and by
// its four stages as targets: today's but for hold and delay. The last four came with an update; the two
// times belong to nothing that exists today.

void SordelinPresetLoader::mapOldValues(int presetVersion)
{
    lfoFieldCount = presetVersion == FirstProduct ? oldLfoFields - 1 : oldLfoFields;
    slotCount = presetVersion == FirstProduct ? firstSlots : previousSlots;
    mapOldDelays(presetVersion);
    if (presetVersion == PreviousProduct)
        mapParameter(sordelin.feedbackLink);
    mapParameter(sordelin.delayLink);
    mapParameter(sordelin.delayReadStyle);
    mapOldRouting(presetVersion);
    for (AbstractPluginParameter* level : std::initializer_list<AbstractPluginParameter*>{
             &sordelin.inputLevel, &sordelin.dryLevel, &sordelin.dryPan, &sordelin.wetLevel,
             &sordelin.wetPan})
        mapParameter(*level);
    if (presetVersion == FirstProduct)
        mapOldFilters();
    mapOldLfos(presetVersion);
    mapParameter(sordelin.receiveMidi);
    mapOldSlots();
    if (presetVersion == FirstProduct)
        return;
    for (float& time : oldModulationTimes)
        mapFloat(time);
    mapParameter(sordelin.autoMuteSelfOscillation);
    mapParameter(sordelin.dryEnabled);
}

void SordelinPresetLoader::mapOldDelays(int presetVersion)
{
    for (int k = 0; k < SordelinLimits::delays; ++k) {
        DelayParameterSet& delay = sordelin.delays[k];
        mapParameter(delay.time);
        mapParameter(delay.offset);
        mapParameter(delay.sync);
        if (presetVersion == FirstProduct) {
            set(delay.pan, k == 0 ? -1.0f : 1.0f);
            continue;
        }
        mapParameter(delay.feedback);
        mapParameter(delay.crossFeedback);
        mapParameter(delay.pan);
    }
}

void SordelinPresetLoader::mapOldFilters()
{
    for (int k = 0; k < SordelinLimits::filters; ++k)
        for (int i = 0; i < sordelin.filters[k].parameterCount(); ++i)
            mapParameter(sordelin.filters[k].parameterAt(i));
}

void SordelinPresetLoader::mapOldRouting(int presetVersion)
{
    if (presetVersion == PreviousProduct)
        mapOldFilters();
    mapParameter(sordelin.filterRouting);
    if (presetVersion == PreviousProduct)
        return;
    for (float* value : {&oldLevelA, &oldBalanceA, &oldLevelB, &oldBalanceB})
        mapFloat(*value);
}

void SordelinPresetLoader::mapOldLfos(int presetVersion)
{
    for (auto& fields : lfoFields)
        for (int field = 0; field < lfoFieldCount; ++field)
            mapFloat(fields[static_cast<std::size_t>(field)], field == Frequency
                                                                  ? sordelin.xlfos[0].frequency.defaultValue()
                                                              : field == Wave ? static_cast<float>(Sine)
                                                                              : 0.0f);
    if (presetVersion == FirstProduct)
        return;
    EGParameterSet& envelope = sordelin.envelopeGenerators[0];
    for (AbstractPluginParameter* field : std::initializer_list<AbstractPluginParameter*>{
             &envelope.threshold, &envelope.triggering, &envelope.attack, &envelope.decay, &envelope.sustain,
             &envelope.release})
        mapParameter(*field);
}

void SordelinPresetLoader::mapOldSlots()
{
    for (int slot = 0; slot < slotCount; ++slot)
        for (int i = 0; i < sordelin.slots[slot].parameterCount(); ++i)
            mapParameter(sordelin.slots[slot].parameterAt(i));
}

// From what was read to what is meant today.

void SordelinPresetLoader::finishLoad(int presetVersion)
{
    if (presetVersion == FirstProduct)
        splitFeedback();
    if (presetVersion <= BeforeFreeze)
        convertDelayTimes();
    if (presetVersion >= BeforeFreeze)
        return adjustDepths();
    convertLfos();
    setSourceCounts(presetVersion);
    if (presetVersion == FirstProduct)
        remapSlots({firstSources, firstTargets, firstSlots});
    else
        remapSlots({previousSources, previousTargets, previousSlots});
    fixSlotCount();
    if (presetVersion == FirstProduct)
        copyFeedbackSlots();
    rescaleMidiSlots();
}

void SordelinPresetLoader::splitFeedback()
{
    for (int k = 0; k < SordelinLimits::delays; ++k) {
        set(sordelin.delays[k].feedback, oldLevelA * balanceFactor(k, oldBalanceA));
        set(sordelin.delays[k].crossFeedback, oldLevelB * balanceFactor(k, oldBalanceB));
    }
}

/// The knob went from 0 up to the same longest time, along the same curve; today it begins at 5 ms.
void SordelinPresetLoader::convertDelayTimes()
{
    for (int k = 0; k < SordelinLimits::delays; ++k) {
        FloatPluginParameter& time = sordelin.delays[k].time;
        const float longestMs = time.valueToDisplay(time.maximumValue());
        const float ms = knobCurve.forward(time.currentValue()) * longestMs;
        set(time, time.displayToValue(ms));
    }
}

void SordelinPresetLoader::adjustDepths()
{
    ModMatrixParamController& controller = sordelin.slotController();
    SlotOperations operations(controller);
    for (int k = 0; k < SordelinLimits::delays; ++k)
        for (const int slot : controller.slotsOfTarget(SordelinTargets::delayFeedback(k))) {
            const int follower = controller.source(slot) - SordelinSources::firstFollower;
            if (follower >= 0 && follower < SordelinLimits::envelopeFollowers)
                operations.scaleLevel(slot, oldFollowerDepth, 1.0f);
        }
    for (int i = 0; i < SordelinLimits::xlfos; ++i) {
        if (!sordelin.xlfos[i].snap.value())
            continue;
        for (const int slot : controller.slotsOfSource(SordelinSources::xlfo(i)))
            if (controller.target(slot) == SordelinTargets::filterFrequency(0) ||
                controller.target(slot) == SordelinTargets::filterFrequency(1))
                operations.scaleLevel(slot, oldSnappedDepth, 1.0f);
    }
}

void SordelinPresetLoader::convertLfos()
{
    for (const auto& fields : lfoFields)
        convertLfo(fields.data());
}

void SordelinPresetLoader::convertLfo(const float* fields)
{
    const int place = sordelin.xlfos.numActive.value();
    XLFOParameterSet& xlfo = sordelin.xlfos[place];
    set(sordelin.xlfos.numActive, static_cast<float>(place + 1));
    set(xlfo.frequency, fields[Frequency]);
    set(xlfo.frequencyOffset, fields[FrequencyOffset]);
    const float syncLength = std::clamp(fields[SyncLength], 0.0f, static_cast<float>(longestSync));
    set(xlfo.syncMode,
        fields[IsSynced] == 0.0f ? 0.0f : static_cast<float>(static_cast<int>(syncLength) + 1));
    set(xlfo.midiTrigger, fields[MidiTrigger] == 0.0f ? 0.0f : 1.0f);

    const float wave = std::clamp(fields[Wave], static_cast<float>(Sine), static_cast<float>(Square));
    const WaveSteps& shape = waveSteps[static_cast<int>(wave) - 1];
    set(xlfo.steps.numActive, 2.0f);
    set(xlfo.steps[0].value, shape.firstValue);
    set(xlfo.steps[1].value, shape.secondValue);
    set(xlfo.steps[0].glide, shape.firstGlide);
    set(xlfo.steps[1].glide, shape.secondGlide);
    setItem(xlfo.steps[0].glideCurve, shape.curve);
    setItem(xlfo.steps[1].glideCurve, shape.curve);
    set(xlfo.balance, shape.balance);
    set(xlfo.phaseOffset, shape.phaseOffset);
}

void SordelinPresetLoader::setSourceCounts(int presetVersion)
{
    const bool isFirst = presetVersion == FirstProduct;
    set(sordelin.envelopeGenerators.numActive, isFirst ? 0.0f : 1.0f);
    const std::span<const MidiModSource::MidiInput> inputs =
        isFirst ? std::span<const MidiModSource::MidiInput>(firstMidiInputs) : previousMidiInputs;
    set(sordelin.midiSources.numActive, static_cast<float>(inputs.size()));
    for (std::size_t i = 0; i < inputs.size(); ++i)
        setItem(sordelin.midiSources[static_cast<int>(i)].input, inputs[i]);
    // The side chain has taken the place that MIDI had.
    IndexedPluginParameter<Triggering>& triggering = sordelin.envelopeGenerators[0].triggering;
    if (!isFirst && triggering.value() == Triggering::SideChain)
        setItem(triggering, Triggering::Midi);
}

void SordelinPresetLoader::remapSlots(const OldModulationTables& tables)
{
    ModMatrixParamController& controller = sordelin.slotController();
    for (int slot = 0; slot < slotCount; ++slot) {
        if (controller.source(slot) >= 0)
            controller.setSource(slot, tables.sourceOf(controller.source(slot)));
        if (controller.target(slot) >= 0)
            controller.setTarget(slot, tables.targetOf(controller.target(slot)));
    }
}

/// Leaves the slots that connect something, and the sources that they use.
void SordelinPresetLoader::fixSlotCount()
{
    compactSlots(sordelin.slotController(), sordelin.slots, SordelinLimits::slots);
    sordelin.xlfos.trim();
    sordelin.envelopeGenerators.trim();
    sordelin.midiSources.trim();
}

/// The first product had one feedback and one cross feedback for both delays: what moved delay 1's moves
/// delay 2's too. Without room for the second slot neither is left, lest the delays drift apart.
void SordelinPresetLoader::copyFeedbackSlots()
{
    ModMatrixParamController& controller = sordelin.slotController();
    SlotOperations operations(controller);
    const int toSecondDelay = SordelinTargets::delayFeedback(1) - SordelinTargets::delayFeedback(0);
    struct Copy {
        int original;
        int copy;
    };
    std::vector<Copy> copies;
    std::vector<int> cleared;
    for (const int slot : controller.slotsOfTargets(
             {SordelinTargets::delayFeedback(0), SordelinTargets::delayCrossFeedback(0)})) {
        const int copy = controller.findFreeSlot();
        if (copy < 0) {
            operations.clearSlot(slot, cleared);
            continue;
        }
        operations.copySlot(slot, copy);
        controller.setTarget(copy, controller.target(slot) + toSecondDelay);
        copies.push_back({slot, copy});
    }
    // What moves an original's level moves its copy's, as long as there are slots.
    for (const auto& [original, copy] : copies)
        for (const int hanging : controller.slotsOfTarget(controller.levelTarget(original))) {
            const int hangingCopy = operations.splitSlot(hanging, 1.0f);
            if (hangingCopy >= 0)
                controller.setTarget(hangingCopy, controller.levelTarget(copy));
        }
    removeClearedSlots(sordelin.slots, cleared);
}

void SordelinPresetLoader::rescaleMidiSlots()
{
    ModMatrixParamController& controller = sordelin.slotController();
    SlotOperations operations(controller);
    for (const Rescale& rescale : midiRescales) {
        const int source = findMidiSource(sordelin.midiSources, rescale.input);
        if (source < 0)
            continue;
        for (const int slot : controller.slotsOfSource(SordelinSources::midi(source)))
            if (rescale.target < 0 || controller.target(slot) == rescale.target)
                operations.scaleLevel(slot, rescale.from, rescale.to);
    }
}
