#pragma once

#include "modulation/ModulationMatrix.h"

/// The signal of a target: its parameter and what the slots add. Without an active slot it shows the
/// parameter's own block. While everything that it reads stands still, one value is computed for the block.
/// Thread: audio.
class GlobalModulationProducer : public wave::Source {
public:
    GlobalModulationProducer(wave::Environment& owner, ModulationMatrix::Target& modulated)
        : Source(owner), target(modulated)
    {}

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    bool sumSteady(int count, float& sum) noexcept REALTIME;
    void sumSamples(wave::Block& block, int count) noexcept REALTIME;

    ModulationMatrix::Target& target;
    wave::SteadyFill steady;
};
