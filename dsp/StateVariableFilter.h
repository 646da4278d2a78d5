#pragma once

#include "dsp/ClipTable.h"
#include "dsp/ParallelFilterUnit.h"
#include "dsp/StateVariableKernel.h"
#include "dsp/StateVariableTables.h"

#include <vector>

/// What makes one characteristic differ from another at a given cut-off and peak.
struct FilterCharacter {
    float resonance = 0.0f;  // above 1 the filter sings by itself
    float cubic = 0.0f;      // bends the band state
    float clipDrive = 0.1f;  // how far up the clipper's curve the signal sits
};

/// The filter that gives the sound its colour: a loop of two integrators that runs three times a sample, with
/// a cubic term in the band state and a soft clipper behind it. Negative damping makes it sing; the limits of
/// the states (band +-1, low +-10) and the clipper bound it. Four lanes at once. Thread: audio.
class StateVariableFilter : public ParallelFilterUnit {
public:
    /// @param sharedTables  outlives the filter
    StateVariableFilter(wave::Environment& owner, const StateVariableTables& sharedTables);

    ~StateVariableFilter() override;

    /// Runs on another build of the loop than the best one.
    void useKernel(const StateVariableKernel& newKernel) noexcept REALTIME { kernel = &newKernel; }

    /// Tells that the lanes of `filter` often are the inputs of the same lanes of this one: then both run at
    /// once. It outlives this one. Thread: main.
    void follow(StateVariableFilter& filter)
    {
        leader = &filter;
        first = &filter;
    }

    void clear() noexcept REALTIME override { states = {}; }

protected:
    /// @param frequency  log2 of Hz
    virtual FilterCharacter characterAt(float frequency, float peak) const noexcept REALTIME;
    /// Drives the loop harder at the same level outside.
    virtual float styleGainValue() const noexcept REALTIME { return 1.0f; }
    /// Tells that another characteristic, whose clipper this is, answers from now on.
    void changeCharacter(const ClipTable& table) noexcept REALTIME
    {
        clipTable = &table.table();
        forgetSettings();
    }

    void prepare() noexcept REALTIME override;
    void setCoefficients(int lane, int segment, float frequency, float peak,
                         float gain) noexcept REALTIME override;
    void copyCoefficients(int fromLane, int toLane, int segment) noexcept REALTIME override;
    void processLanes(int count) noexcept REALTIME override;
    void processLanesInSeries(int count) noexcept REALTIME override;
    void clearLane(int lane) noexcept REALTIME override;

private:
    using Coefficients = StateVariableKernel::Coefficients;
    static_assert(lanes == StateVariableKernel::lanes);

    /// What coefficients follow from, besides what `prepare` finds.
    struct Setting {
        float frequency, peak, gain;
        bool operator==(const Setting&) const = default;
    };

    StateVariableKernel::Job job() noexcept REALTIME;
    /// The next coefficients are all computed.
    void forgetSettings() noexcept REALTIME;
    void setDampings(Coefficients& target, std::size_t lane, float resonance,
                     float peak) const noexcept REALTIME;

    StateVariableFilter* first = nullptr;  // the leader
    const StateVariableTables& tables;
    const ClipTable ownClipTable;
    const FunctionTable* clipTable;
    std::vector<Coefficients> segments;
    // Behind the first segment's coefficients, which stay as long as nothing moves. NaN equals nothing.
    Setting settings[lanes];
    wave::AlignedBuffer interleaved;  // sample by sample, the four lanes side by side
    StateVariableKernel::States states{};
    const StateVariableKernel* kernel = &StateVariableKernel::best();
    float sampleRate = 0.0f;
    float log2SampleRate = 0.0f;
    float styleGain = 1.0f;
    int stageCount = 1;
    FilterResponse settingResponse = FilterResponse::LowPass;
};
