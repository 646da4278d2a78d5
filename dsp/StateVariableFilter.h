#pragma once

#include "dsp/ClipTable.h"
#include "dsp/ParallelFilterUnit.h"
#include "dsp/StateVariableTables.h"
#include "foundation/Float4.h"

#include <memory>
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

    void clear() noexcept REALTIME override;

protected:
    /// @param frequency  log2 of Hz
    virtual FilterCharacter characterAt(float frequency, float peak) const noexcept REALTIME;
    /// Drives the loop harder at the same level outside.
    virtual float styleGainValue() const noexcept REALTIME { return 1.0f; }
    void setClipTable(const ClipTable& table) noexcept REALTIME { clipTable = &table.table(); }

    void prepare() noexcept REALTIME override;
    void setCoefficients(int lane, int segment, float frequency, float peak,
                         float gain) noexcept REALTIME override;
    void copyCoefficients(int fromLane, int toLane, int segment) noexcept REALTIME override;
    void processLanes(int count) noexcept REALTIME override;
    void clearLane(int lane) noexcept REALTIME override;

private:
    static constexpr int maxStages = 4;  // 12 dB per octave each

    /// Of one segment: for each coefficient four lanes.
    struct alignas(16) Coefficients {
        float frequency[lanes];
        float damping[maxStages][lanes];
        float cubic[lanes];
        float inputGain[lanes];
        float clipInGain[lanes];
        float clipOutGain[lanes];
    };

    void setDampings(Coefficients& target, std::size_t lane, float resonance,
                     float peak) const noexcept REALTIME;
    void interleaveInputs(int count) noexcept REALTIME;
    void deinterleaveOutputs(int count) noexcept REALTIME;
    template <int stages>
    void runSegments(int count) noexcept REALTIME;
    template <int stages>
    void runLoop(const Coefficients& coefficients, int from, int count) noexcept REALTIME;
    void clip(const Coefficients& coefficients, int from, int count) noexcept REALTIME;

    const StateVariableTables& tables;
    const ClipTable ownClipTable;
    const FunctionTable* clipTable;
    std::vector<Coefficients> segments;
    wave::AlignedBuffer interleaved;  // sample by sample, the four lanes side by side
    Float4 band[maxStages];
    Float4 low[maxStages];
    float sampleRate = 0.0f;
    float log2SampleRate = 0.0f;
    float styleGain = 1.0f;
    int stageCount = 1;
};
