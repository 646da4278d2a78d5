#pragma once

#include "core/AbstractMusicEventReceiver.h"
#include "core/BypassProcessor.h"
#include "core/ControllerMapping.h"
#include "core/GenericPluginBase.h"
#include "core/MidiDecoder.h"
#include "core/MidiMessage.h"
#include "core/ProcessorChannel.h"
#include "foundation/LockFreeQueue.h"
#include "wave/Environment.h"

#include <array>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

class BinaryDataWriter;

/// The audio half of a plug-in: the engine, a second copy of every parameter, and the queues by which changes
/// reach the audio thread. It sees channel pointers and a sample count, and knows no plug-in format.
///
/// A product builds its graph in its constructor and fills the hooks.
class GenericPluginProcessor : public GenericPluginBase {
public:
    /// How the processor reaches the other half.
    class ProcessorAdapter {
    public:
        virtual ~ProcessorAdapter() = default;
        /// MIDI was decoded; `controller` is the last one that moved, or -1. Thread: audio.
        virtual void controllerActivity(int controller) noexcept REALTIME = 0;
        /// The processor itself set a parameter. Thread: that of the change.
        virtual void parameterChangedByProcessor(int index) noexcept = 0;
        /// A MIDI program change asks for a preset. @param bank  0..16383  @param program  0..127
        /// Thread: audio.
        virtual void programChange(int bank, int program) noexcept REALTIME = 0;
    };

    /// While one lives, its thread is the audio thread: what that thread queues takes neither memory nor a
    /// lock. One at a time.
    class AudioCall {
    public:
        explicit AudioCall(GenericPluginProcessor& called) noexcept REALTIME : processor(called)
        {
            processor.audioThread.store(std::this_thread::get_id(), std::memory_order_relaxed);
        }
        AudioCall(const AudioCall&) = delete;
        AudioCall& operator=(const AudioCall&) = delete;
        ~AudioCall() REALTIME { processor.audioThread.store({}, std::memory_order_relaxed); }

    private:
        GenericPluginProcessor& processor;
    };

    GenericPluginProcessor();
    ~GenericPluginProcessor() override;

    // Called by the adapter.

    /// True on the thread of an AudioCall. Thread: any.
    bool isAudioCall() const noexcept REALTIME
    {
        return audioThread.load(std::memory_order_relaxed) == std::this_thread::get_id();
    }
    /// Makes room for a MIDI message at every frame of a host's block. Thread: main.
    void reserveBlock(std::uint32_t frames) { midiQueue.reserve(frames); }

    void setAdapter(ProcessorAdapter* processorAdapter) { adapter = processorAdapter; }

    /// Where the host's song stands; once per host block, before `process`. Thread: audio.
    /// @param newTempo  beats per minute; 0 counts as 120
    /// @param position  beats from the start of the song
    void updateTransport(float newTempo, double position, bool playing) noexcept REALTIME;

    /// Renders `frames` samples. Parameter changes that were queued take effect first; MIDI messages split
    /// the run at their offsets.
    /// @param inputs   the layout's channels, then those of the side chain; null is silence. May be the
    /// outputs' memory.
    /// @param outputs  `outputCount` channels; more than the layout has are left alone
    /// @param status   BypassProcessor::Status bits: InputSilent in, OutputSilent out
    /// Thread: audio.
    virtual void process(const float* const* inputs, int inputCount, float* const* outputs, int outputCount,
                         int frames, unsigned& status) noexcept REALTIME;

    /// Empties the engine and starts the clocks anew. Thread: audio, or main while the engine rests.
    virtual void reset() noexcept REALTIME;
    /// Brings queued changes into the engine, unless a batch is open. Thread: audio, or main while the engine
    /// rests.
    void applyQueuedChanges() noexcept REALTIME;
    /// Tail in samples; -1 for an endless one, -2 for one that depends on notes.
    virtual int tailLength() const noexcept REALTIME { return isEffect() ? -1 : -2; }
    int latency() const noexcept REALTIME { return latencySamples; }

    /// Writes what an editor shows of the engine, in the order in which GenericPlugin reads it, and keeps the
    /// engine gathering it for another second. Thread: main.
    virtual void writeDisplayData(BinaryDataWriter& writer);

    /// An editor shows where modulation stands. Thread: main.
    virtual void requestModulationDisplay() {}

    /// Queues a message for the next run. Thread: any.
    void queueMidi(const MidiMessage& message) noexcept;
    /// Whether the host's MIDI may come in.
    bool acceptsMidi() const noexcept REALTIME;

    wave::Environment& engine() noexcept REALTIME { return environment; }
    /// Where decoded MIDI goes. There since `createEngine`.
    AbstractMusicEventReceiver& musicEvents() const noexcept REALTIME { return *musicEventReceiver; }

    /// What controllers move: a copy of the map that all instances share, which the adapter keeps alike.
    ControllerMapping& controllerMapping() noexcept REALTIME { return mapping; }

    // Called by the receiver of decoded MIDI, at the message's sample. Thread: audio.

    /// @param key  0..127  @param velocity  above 0, to 1
    virtual void noteOn(int key, float velocity) noexcept REALTIME;
    /// Key 0 stands for all keys too: MIDI was switched off, or somebody asked for silence.
    /// @param key  0..127  @param velocity  0..1
    virtual void noteOff(int key, float velocity) noexcept REALTIME;
    /// Moves what the controller is mapped to, if that still exists; this half, the other one and the host
    /// learn of it as of any change that the engine makes. @param number  0..127  @param value  0..1
    void controllerMoved(int number, float value) noexcept REALTIME;
    void programChanged(int bank, int program) noexcept REALTIME;

    // GenericPluginBase

    void beginParameterBatch() override { pauseCount.fetch_add(1); }
    void endParameterBatch() override { pauseCount.fetch_sub(1); }
    void parameterValueChanged(int index, float value, int changeFlags) noexcept override;
    void requestSoftReset() override;
    void requestHardReset() override;

    // Called by the engine's wrapper.

    /// Leaves one pointer per channel to what the engine rendered for this sub-block; null is silence.
    /// Thread: audio.
    virtual void renderOutputs(const float** rendered, int count, int frames) noexcept REALTIME;
    /// Whether silence of these channels may send the engine to sleep. Thread: audio.
    virtual bool outputsSilent(const float* const* rendered, int count, int frames) const noexcept REALTIME;
    /// True if every sample is within 1e-7 of 0. Null channels are silent.
    static bool isSilent(const float* const* samples, int count, int offset, int frames) noexcept REALTIME;

    // All input channels, the side chain's among them, are the host's. Set by the adapter for every block.
    bool inputsConnected = false;

protected:
    /// The most samples the engine takes at once.
    virtual int blockSize() const noexcept REALTIME { return environment.maxBlockSize(); }
    virtual void transportChanged(float newTempo, double beats) noexcept REALTIME;
    /// Makes the receiver of decoded MIDI; the default plays all channels. Called once, by `createEngine`.
    virtual std::unique_ptr<AbstractMusicEventReceiver> createMusicEventReceiver();
    /// A value has reached the engine's objects. -1 stands for all parameters.
    virtual void parameterApplied(int index) noexcept REALTIME;
    /// The engine has a new rate. Thread: main.
    virtual void sampleRateChanged();

    void setLatency(int samples);
    /// Hands every value of the tree to the engine, in index order. Thread: audio, or main while the engine
    /// rests.
    void deliverAll() noexcept REALTIME;
    /// Makes what needs the product's identity. Called once, by the product's constructor.
    void createEngine();

    wave::Environment environment;
    std::vector<std::unique_ptr<ProcessorChannel>> channels;
    float tempo = 120.0f;       // beats per minute
    double beatPosition = 0.0;  // the engine's own beat clock

private:
    struct ParameterChange {
        std::int32_t index;  // or one of the two requests
        float value;
    };
    static constexpr std::int32_t softResetRequest = -1;
    static constexpr std::int32_t hardResetRequest = -2;
    static constexpr int longUnwatched = 12288000;  // samples, where counting ends

    void setInputs(const float* const* inputs, int inputCount, int frames) noexcept REALTIME;
    void pushChange(ParameterChange change) noexcept;
    void applyParameterChanges() noexcept REALTIME;
    void deliver(int index, float value) noexcept REALTIME;
    void applyBypass() noexcept REALTIME;
    void applyMidiState() noexcept REALTIME;
    void decodeMidi(const MidiMessage& message) noexcept REALTIME;
    void markPlayed(bool playing) noexcept REALTIME;
    void countUnwatched(int frames) noexcept REALTIME;

    std::atomic<std::thread::id> audioThread{};  // of the call that is under way
    ProcessorAdapter* adapter = nullptr;
    std::unique_ptr<BypassProcessor> bypassProcessor;
    bool parameterBypass = false;
    double lastBeatPosition = 0.0;
    bool transportUpdated = false;
    int latencySamples = 0;
    LockFreeQueue<MidiMessage> midiQueue{1024, 65536};
    std::unique_ptr<AbstractMusicEventReceiver> musicEventReceiver;
    std::unique_ptr<MidiDecoder> midiDecoder;
    ControllerMapping mapping;
    int lastController = -1;  // moved since `process` began
    int samplesSinceTransport = 0;
    LockFreeQueue<ParameterChange> parameterQueue{8192, 65536};
    std::atomic<bool> changesLost{false};  // the queue was full: the engine takes all values anew
    std::atomic<int> pauseCount{0};        // above 0 the parameter queue waits
    // What editors are shown is written by the audio thread and read by the main one.
    std::array<std::atomic<std::uint64_t>, 4> playTimestamps;
    std::atomic<float> shownTempo{120.0f};
    std::atomic<int> displayCountdownSamples{longUnwatched};  // since an editor asked for display data
};
