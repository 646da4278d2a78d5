#pragma once

#include "modulation/ModulationMatrix.h"
#include "wave/FloatParameterSource.h"

/// Joins a level and a pan of the matrix into one signal for each of two channels, each a ramp of its own.
/// Thread: audio, but for construction.
class LevelPanTarget : public wave::Component, public ModulationMatrix::SecondaryTarget {
public:
    enum class Mode {
        Multiply,  // L (1 - max(P, 0)) and L (1 + min(P, 0)): a balance
        Add,       // L + P and L - P: a spread
    };

    /// Takes the limits of the level's range. Becomes the change listener of both targets.
    LevelPanTarget(wave::Environment& environment, ModulationMatrix& matrix, int levelId, int panId,
                   Mode joinMode);

    /// The signal of a channel, 0 or 1.
    wave::Producer& output(int channel) noexcept { return channel == 0 ? first : second; }

    void baseValueChanged() noexcept REALTIME override;

private:
    ModulationMatrix::Target& levelTarget;
    ModulationMatrix::Target& panTarget;
    Mode mode;
    FloatParameterSource first;
    FloatParameterSource second;
};
