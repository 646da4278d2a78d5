#include "core/GenericPluginProcessor.h"

#include "core/DefaultChannelEventReceiver.h"
#include "core/DefaultEventReceiver.h"
#include "core/ProcessWideData.h"
#include "foundation/BinaryDataWriter.h"
#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::uint64_t neverPlayed = ~std::uint64_t{0};
constexpr double wrapBeats = 256.0;

}  // namespace

GenericPluginProcessor::GenericPluginProcessor()
{
    for (auto& timestamp : playTimestamps)
        timestamp = neverPlayed;
    environment.sampleRateChanged.setHandler(NotifyEvent::handler([this](void*) { sampleRateChanged(); }));
    ProcessWideData::acquire();
}

GenericPluginProcessor::~GenericPluginProcessor()
{
    environment.markDestroying();
    ProcessWideData::release();
}

void GenericPluginProcessor::createEngine()
{
    musicEventReceiver = createMusicEventReceiver();
    midiDecoder = std::make_unique<MidiDecoder>(*musicEventReceiver);
    bypassProcessor = std::make_unique<BypassProcessor>(*this);
}

void GenericPluginProcessor::setLatency(int samples)
{
    latencySamples = samples;
    bypassProcessor->updateLatency();
}

// Transport.

void GenericPluginProcessor::updateTransport(float newTempo, double position, bool playing) noexcept
{
    if (isNear(newTempo, 0.0f))
        newTempo = 120.0f;
    if (playing || std::fabs(position - lastBeatPosition) > signalEpsilon) {
        beatPosition = position;
    } else {
        // A stopped host doesn't stop the beat: the clock runs on by what was rendered since.
        const double beats =
            1.0 / 60.0 / environment.sampleRate() * (samplesSinceTransport * double(newTempo));
        beatPosition += beats;
        beatPosition = wrapBeats * (beatPosition / wrapBeats - std::trunc(beatPosition / wrapBeats));
    }
    markPlayed(playing);
    tempo = newTempo;
    shownTempo.store(newTempo, std::memory_order_relaxed);
    lastBeatPosition = position;
    transportUpdated = true;
    samplesSinceTransport = 0;
}

void GenericPluginProcessor::markPlayed(bool playing) noexcept
{
    const std::uint64_t number = ProcessWideData::nextBlockNumber();
    if (!playing) {
        for (auto& timestamp : playTimestamps)
            timestamp.store(neverPlayed, std::memory_order_relaxed);
        return;
    }
    const auto place = std::find(playTimestamps.begin(), playTimestamps.end(), neverPlayed);
    if (place != playTimestamps.end())
        place->store(number << 32 | 0xFFFFFFFEu, std::memory_order_relaxed);
}

void GenericPluginProcessor::transportChanged(float, double) noexcept {}

// What editors are shown.

void GenericPluginProcessor::countUnwatched(int frames) noexcept
{
    int counted = displayCountdownSamples.load();
    // An editor that asks at this moment wins.
    displayCountdownSamples.compare_exchange_strong(counted,
                                                    std::min(longUnwatched - frames, counted) + frames);
    environment.setDisplayActive(static_cast<float>(displayCountdownSamples.load()) <
                                 environment.sampleRate());
}

void GenericPluginProcessor::writeDisplayData(BinaryDataWriter& writer)
{
    displayCountdownSamples = 0;
    // No source of signals, levels or spectra stands in the engine: the stream is its tail alone.
    writer.writeFloat(shownTempo);
    for (const auto& timestamp : playTimestamps)
        writer.writeUInt64(timestamp);
}

// Rendering.

void GenericPluginProcessor::process(const float* const* inputs, int inputCount, float* const* outputs,
                                     int outputCount, int frames, unsigned& status) noexcept
{
    environment.beginWork();
    countUnwatched(frames);
    samplesSinceTransport += frames;
    lastController = -1;
    applyQueuedChanges();
    if (transportUpdated) {
        transportChanged(tempo, beatPosition);
        transportUpdated = false;
    }
    outputCount = std::min(outputCount, channelCount());
    setInputs(inputs, inputCount, frames);

    unsigned state = status & BypassProcessor::InputSilent
                         ? unsigned{BypassProcessor::InputSilent} | BypassProcessor::OutputSilent
                         : 0u;
    MidiMessage message;
    bool held = midiQueue.pop(message);
    bool received = held;
    for (int position = 0; position < frames;) {
        const bool due = held && message.offset < frames;
        const int end = due ? std::max(message.offset, position) : frames;
        while (position < end) {
            const int run = std::min(end - position, blockSize());
            bypassProcessor->run(inputs, outputs, outputCount, position, run, state);
            position += run;
        }
        if (!due)
            continue;
        decodeMidi(message);
        held = midiQueue.pop(message);
    }
    status = state;
    for (; held; held = midiQueue.pop(message))
        decodeMidi(message);
    if (received && adapter)
        adapter->controllerActivity(lastController);
    environment.endWork();
}

void GenericPluginProcessor::setInputs(const float* const* inputs, int inputCount, int frames) noexcept
{
    if (!isEffect())
        return;
    const int mainCount = channelCount();
    for (int c = 0; c < static_cast<int>(channels.size()); ++c) {
        const int sideChain = hasSideChain() ? mainCount + c : c;
        ProcessorChannel& channel = *channels[static_cast<std::size_t>(c)];
        channel.mainInput.setBuffer(c < inputCount ? inputs[c] : nullptr, frames);
        channel.sideChainInput.setBuffer(sideChain < inputCount ? inputs[sideChain] : nullptr, frames);
    }
}

void GenericPluginProcessor::renderOutputs(const float** rendered, int count, int frames) noexcept
{
    for (int c = 0; c < count; ++c) {
        rendered[c] = nullptr;
        const auto channel = static_cast<std::size_t>(c);
        if (channel < channels.size() && channels[channel]->output)
            rendered[c] = channels[channel]->output->pull(frames).data();
    }
}

bool GenericPluginProcessor::outputsSilent(const float* const* rendered, int count, int frames) const noexcept
{
    return isSilent(rendered, count, 0, frames);
}

bool GenericPluginProcessor::isSilent(const float* const* samples, int count, int offset, int frames) noexcept
{
    for (int c = 0; c < count; ++c) {
        if (!samples[c])
            continue;
        const float* first = samples[c] + offset;
        if (!std::all_of(first, first + frames, [](float x) { return std::fabs(x) <= 1e-7f; }))
            return false;
    }
    return true;
}

void GenericPluginProcessor::reset() noexcept
{
    environment.reset(wave::Environment::Reset::Enabled);
    bypassProcessor->requestReset();
    beatPosition = 0.0;
    samplesSinceTransport = 0;
    applyQueuedChanges();
}

void GenericPluginProcessor::sampleRateChanged()
{
    for (const auto& channel : channels)
        channel->sampleRateChanged();
}

// MIDI.

void GenericPluginProcessor::queueMidi(const MidiMessage& message) noexcept
{
    if (isAudioCall())
        midiQueue.pushWithin(message);
    else
        midiQueue.push(message);
}

bool GenericPluginProcessor::acceptsMidi() const noexcept
{
    return !midiStateParameter || std::lround(midiStateParameter->currentValue()) == 0;
}

void GenericPluginProcessor::decodeMidi(const MidiMessage& message) noexcept
{
    midiDecoder->decode(message);
    // What the message moved is heard from here on.
    applyQueuedChanges();
}

std::unique_ptr<AbstractMusicEventReceiver> GenericPluginProcessor::createMusicEventReceiver()
{
    return std::make_unique<DefaultEventReceiver>(std::make_unique<DefaultChannelEventReceiver>(*this));
}

void GenericPluginProcessor::noteOn(int, float) noexcept {}

void GenericPluginProcessor::noteOff(int, float) noexcept {}

void GenericPluginProcessor::controllerMoved(int number, float value) noexcept
{
    lastController = number;
    const std::int32_t target = mapping.targetOf(number);
    if (target >= ControllerMapping::firstVirtualTarget) {
        const auto position = static_cast<std::size_t>(target - ControllerMapping::firstVirtualTarget);
        if (position < virtualMidiParameters.size())
            virtualMidiParameters[position]->setNormalised(value);
    } else if (target >= 0 && target < parameterCount()) {
        AbstractPluginParameter& moved = parameter(target);
        moved.setValue(moved.normalToValue(value), announceChange);
    }
}

void GenericPluginProcessor::programChanged(int bank, int program) noexcept
{
    if (adapter)
        adapter->programChange(bank, program);
}

// Parameters.

void GenericPluginProcessor::parameterValueChanged(int index, float value, int changeFlags) noexcept
{
    pushChange({index, value});
    // Another thread may have set it meanwhile and pushed before: what is pushed last is what holds.
    for (float pushed = value; pushed != parameter(index).currentValue();) {
        pushed = parameter(index).currentValue();
        pushChange({index, pushed});
    }
    if ((changeFlags & noEcho) == 0 && adapter)
        adapter->parameterChangedByProcessor(index);
}

void GenericPluginProcessor::requestSoftReset() { pushChange({softResetRequest, 0.0f}); }

void GenericPluginProcessor::requestHardReset() { pushChange({hardResetRequest, 0.0f}); }

void GenericPluginProcessor::pushChange(ParameterChange change) noexcept
{
    const int taken = isAudioCall() ? parameterQueue.pushWithin(change) : parameterQueue.push(change);
    if (!taken)
        changesLost.store(true);
}

void GenericPluginProcessor::applyQueuedChanges() noexcept
{
    if (pauseCount.load() == 0)
        applyParameterChanges();
}

void GenericPluginProcessor::applyParameterChanges() noexcept
{
    ParameterChange change;
    while (parameterQueue.pop(change)) {
        if (change.index == softResetRequest)
            environment.reset(wave::Environment::Reset::Soft);
        else if (change.index == hardResetRequest)
            environment.reset(wave::Environment::Reset::Enabled);
        else
            deliver(change.index, change.value);
    }
    if (changesLost.exchange(false))
        deliverAll();
}

void GenericPluginProcessor::deliverAll() noexcept
{
    for (int i = 0; i < parameterCount(); ++i)
        deliver(i, parameter(i).currentValue());
}

void GenericPluginProcessor::deliver(int index, float value) noexcept
{
    parameter(index).deliverValue(value);
    parameterApplied(index);
}

void GenericPluginProcessor::parameterApplied(int index) noexcept
{
    for (const auto& channel : channels)
        channel->parameterApplied(index);
    if (midiStateParameter && index == midiStateParameter->index())
        applyMidiState();
    if (bypassParameter && index == bypassParameter->index())
        applyBypass();
}

void GenericPluginProcessor::applyMidiState() noexcept
{
    // What is held would never be let go.
    if (static_cast<int>(midiStateParameter->currentValue()) == 1)
        noteOff(0, 1.0f);
}

void GenericPluginProcessor::applyBypass() noexcept
{
    const bool on = static_cast<int>(bypassParameter->currentValue()) != 0;
    if (on == parameterBypass)
        return;
    parameterBypass = on;
    bypassProcessor->setBypassed(on);
}
