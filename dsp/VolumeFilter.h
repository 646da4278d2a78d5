#pragma once

#include "wave/Filter.h"
#include "wave/FloatParameterSource.h"

/// A gain stage that is free at 0 and at 1: silence isn't computed, and unity is the input's own block.
/// Thread: audio.
class VolumeFilter : public wave::Filter {
public:
    explicit VolumeFilter(wave::Environment& owner) : Filter(owner, OwnBlock::Passing), level(owner, 1.0f) {}

    FloatParameterBus level;                         // linear gain
    wave::Producer* multiplier = nullptr;            // a second gain signal
    wave::MuteController* muteController = nullptr;  // asked before anything is pulled

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;
};
