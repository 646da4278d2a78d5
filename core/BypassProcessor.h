#pragma once

#include "dsp/Delay.h"
#include "wave/FloatParameter.h"

#include <array>
#include <memory>
#include <vector>

class GenericPluginProcessor;

/// Wraps every run of the engine: the fade between wet and dry, the dry signal in step with the engine's
/// latency, and the sleep of an engine that has nothing to play. Thread: audio.
class BypassProcessor {
public:
    static constexpr int maxChannels = 16;

    /// Bits of the status word of a run.
    enum Status : unsigned { InputSilent = 1, OutputSilent = 2 };

    explicit BypassProcessor(GenericPluginProcessor& processor);

    /// Runs `frames` samples at `offset` of the channels, at most one block.
    /// @param status  in: InputSilent; OutputSilent is taken away when something sounds
    void run(const float* const* inputs, float* const* outputs, int outputCount, int offset, int frames,
             unsigned& status) noexcept REALTIME;

    /// The bypass control moved. Thread: audio.
    void setBypassed(bool on) noexcept REALTIME;
    /// What is heard next begins anew. Thread: audio, or main while the engine rests.
    void requestReset() noexcept REALTIME;

    /// Makes the dry delays fit the processor's latency. Thread: main, engine at rest.
    void updateLatency();

private:
    enum Sleep { NeverAgain = -2, Running = -1, Asleep = 0 };  // above 0: samples left to render before sleep

    struct Run {
        const float* const* inputs;
        float* const* outputs;
        int outputCount;
        int offset;
        int frames;
    };

    void advanceFade(int frames) noexcept REALTIME;
    bool isAsleep(const Run& run, bool silent) noexcept REALTIME;
    void render(const Run& run, unsigned& status) noexcept REALTIME;
    void updateSleepAfterRender(const Run& run, bool silent, unsigned& status) noexcept REALTIME;
    void feedDryDelays(const Run& run) noexcept REALTIME;
    void writeWet(const Run& run) noexcept REALTIME;
    void writeDry(const Run& run) noexcept REALTIME;
    void mixWet(const Run& run, const wave::Block& dryGain) noexcept REALTIME;
    int sleepDelay() const noexcept REALTIME;

    GenericPluginProcessor& owner;
    FloatParameter fade;  // 0 wet only, 1 dry only
    int countdown = 0;    // samples until a pending fade starts
    bool bypassed = false;
    bool fadePending = false;
    bool resetPending = false;
    int latency = 0;                                      // samples, of `dryDelays`
    std::vector<std::unique_ptr<wave::Delay>> dryDelays;  // one per channel; none at a latency of 0
    std::array<const float*, maxChannels> wetChannels{};  // where the engine left its output; null is silence
    int silenceCountdown;
};
