#pragma once

#include "dsp/GenericFilter.h"

#include <array>
#include <vector>

/// The clean filter: second-order sections designed from an analog prototype, in a topology-preserving
/// state-variable form. It neither clips nor colours. Thread: audio.
class BiQuadFilter : public SingleFilterUnit {
public:
    explicit BiQuadFilter(wave::Environment& owner);

    void clear() noexcept REALTIME override { states.fill({}); }
    void run(const FilterSignals& signals, const wave::Block& in, wave::Block& out,
             int count) noexcept REALTIME override;

private:
    static constexpr int maxStages = 4;

    struct Section {
        float g, k;  // integrator gain, and damping plus g
        float lowGain, bandGain, highGain;
    };
    struct State {
        float first = 0.0f, second = 0.0f;
    };

    int stageCount() const noexcept REALTIME;
    double stageQ(int stage, double peak) const noexcept REALTIME;
    Section section(double tangent, double q) const noexcept REALTIME;
    void setCoefficients(int segment, float frequency, float peak) noexcept REALTIME;
    void runStage(int stage, int segments, const float* in, float* out) noexcept REALTIME;

    std::vector<std::array<Section, maxStages>> sections;  // by segment
    std::array<State, maxStages> states{};
};
