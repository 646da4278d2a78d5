#pragma once

#include "wave/FloatParameter.h"

/// What a slot of the matrix says at present. Thread: audio.
struct alignas(64) ModulationSlot {
    ModulationSlot(int slotIndex, int slotLevelTarget, wave::Producer& levelSignal,
                   FloatParameter& levelParameter)
        : index(slotIndex), levelTarget(slotLevelTarget), level(&levelSignal), plainLevel(&levelParameter)
    {}

    /// The source reaches the target: both are set, the source runs, the slot isn't bypassed and closes no
    /// circle.
    bool isActive() const noexcept REALTIME { return signal != nullptr; }

    const int index;
    const int levelTarget;  // the slot's level is a target itself
    int source = -1;        // ids; -1 is none
    int target = -1;
    bool bypassed = false;
    bool inverted = false;
    wave::Producer* level;             // level times depth, in the units of the target
    FloatParameter* plainLevel;        // the same without a slot on the level; null with one
    wave::Producer* signal = nullptr;  // the source's, while the slot is active
    ModulationSlot* next = nullptr;    // the next active one on the same target
    bool levelRests = false;           // `plainLevel` stands at `restingLevel`, and has passed no time since
    float restingLevel = 0.0f;

    /// Before `plainLevel` moves: it has stood there until now.
    void wakeLevel() noexcept REALTIME
    {
        if (levelRests && plainLevel)
            plainLevel->rest(0);
        levelRests = false;
    }
};
