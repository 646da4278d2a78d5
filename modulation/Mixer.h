#pragma once

#include "foundation/Property.h"
#include "wave/FloatParameterSource.h"
#include "wave/Producer.h"

#include <memory>
#include <vector>

/// Joins any number of inputs, each with a gain that may be a signal. An input whose gain rests at 0 isn't
/// pulled. Thread: audio, but for `setInputCount`.
class Mixer : public wave::Source {
public:
    /// With p = input times gain and y the result of the inputs before it; the first input gives p, or its
    /// magnitude times the gain where the operation works on magnitudes.
    enum class Operation {
        Add,               // y + p
        Subtract,          // y - p
        LargestMagnitude,  // max(|p|, y)
        Multiply,          // y p
        DivideClamped,     // y / |p| within 0..1; 0 where p is 0
        DivideFloored,     // max(y, 1e-9) / max(|p|, 1e-9)
        DivideHeld,        // y / |p|; where p vanishes, the result of the sample before
        Largest,           // max(y, p)
        Smallest,          // min(y, p)
    };

    struct MixerInput {
        MixerInput(wave::Environment& owner, float gainLower, float gainUpper);
        FloatParameterBus gain;
        wave::Producer* source = nullptr;
    };

    Mixer(wave::Environment& owner, int inputCount, Operation mixOperation = Operation::Add);

    /// Makes or removes inputs at the end. Thread: main.
    void setInputCount(int count);
    int inputCount() const noexcept REALTIME { return static_cast<int>(inputs.size()); }
    MixerInput& mixerInput(int index) noexcept { return *inputs[static_cast<std::size_t>(index)]; }

    Property<Operation> operation;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    void sum(wave::Block& block, int count) noexcept REALTIME;
    void combine(wave::Block& block, int count) noexcept REALTIME;
    void apply(const wave::Block& in, const wave::Block& gain, float* y, int count) noexcept REALTIME;

    std::vector<std::unique_ptr<MixerInput>> inputs;
    float lastRatio = 1.0f;
    float gainUpper = 1.0f;
    float gainLower = 0.0f;
};
