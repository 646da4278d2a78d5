#pragma once

#include "modulation/ModulationMatrix.h"

#include <cstdint>
#include <vector>

/// How far the slots have moved each target, for an editor that shows it. Thread: audio.
class ModulationDisplay {
public:
    ModulationDisplay(wave::Environment& owner, ModulationMatrix& shownMatrix);

    /// Takes the values of the block that was just computed, if the engine is watched and a 60th of a second
    /// has gone by since the last time.
    void update() noexcept REALTIME;

    /// By target id: the distance from the parameter's signal, in units of the target's scale.
    const std::vector<float>& targets() const noexcept REALTIME { return distances; }

private:
    float distanceOf(int target) const noexcept REALTIME;

    wave::Environment& environment;
    ModulationMatrix& matrix;
    std::vector<float> distances;
    std::uint64_t lastTime = 0;  // of the last update, in samples
};
