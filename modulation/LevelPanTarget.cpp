#include "modulation/LevelPanTarget.h"

#include "foundation/Tolerance.h"

#include <algorithm>

LevelPanTarget::LevelPanTarget(wave::Environment& environment, ModulationMatrix& matrix, int levelId,
                               int panId, Mode joinMode)
    : levelTarget(matrix.target(levelId)),
      panTarget(matrix.target(panId)),
      mode(joinMode),
      first(environment, 0.0f),
      second(environment, 0.0f),
      controller(environment, *this, *matrix.producerForTarget(levelId), *matrix.producerForTarget(panId))
{
    levelTarget.changeListener = this;
    panTarget.changeListener = this;
    const ModulationRange& range = levelTarget.range;
    first.parameter.setRange(range.lower, range.upper, range.span);
    second.parameter.setRange(range.lower, range.upper, range.span);
    LevelPanTarget::baseValueChanged();
}

void LevelPanTarget::baseValueChanged() noexcept
{
    const float level = levelTarget.parameterSignal();
    const float pan = panTarget.parameterSignal();
    first.assign(joined(level, pan, 0));
    second.assign(joined(level, pan, 1));
}

/// Within the limits of the level, as the ramps are.
float LevelPanTarget::joined(float levelValue, float panValue, int channel) const noexcept
{
    const float away = channel == 0 ? panValue : -panValue;  // from this channel
    const float sum = mode == Mode::Add ? levelValue + away : levelValue - std::max(away, 0.0f) * levelValue;
    return std::min(std::max(sum, levelTarget.lower()), levelTarget.upper());
}

void LevelPanTarget::join(const Signals& in, int channel, float* out, int count) const noexcept
{
    const float* l = in.level.data();
    const float* p = in.pan.data();
    for (int i = 0; i < count; ++i)
        out[i] = joined(l[i], p[i], channel);
}

/// What the channel's ramp is away from its parameters' own ramps, which reach the same end by another way.
/// With it a slot that comes or goes at level 0 makes no step, wherever the ramps are.
void LevelPanTarget::addRest(const wave::Block& ramp, const Signals& base, int channel, float* out,
                             int count) const noexcept
{
    for (int i = 0; i < count; ++i) {
        const float rest = ramp[i] - joined(base.level[i], base.pan[i], channel);
        out[i] = std::min(std::max(out[i] + rest, levelTarget.lower()), levelTarget.upper());
    }
}

void LevelPanTarget::VoiceController::generate(wave::Block** blocks, int count, int) noexcept
{
    // In every block, at the middle of the pan too: a ramp that nobody reads would jump at its next move.
    wave::Block* const ramps[] = {&owner.first.pull(count), &owner.second.pull(count)};
    if (owner.isUnmodulated()) {
        std::copy_n(ramps, 2, blocks);
        return;
    }
    const Signals in{level.pull(count), pan.pull(count)};
    const Signals base{owner.levelTarget.forwarder.pull(count), owner.panTarget.forwarder.pull(count)};
    const bool settled = base.areConstant() && ramps[0]->isConstant() && ramps[1]->isConstant();
    if (settled && in.pan.isConstant() && isNear(in.pan[0], 0.0f)) {
        std::fill_n(blocks, 2, &in.level);
        return;
    }
    const bool constant = settled && in.areConstant();
    for (int channel = 0; channel < 2; ++channel) {
        wave::Block& out = *blocks[channel];
        if (constant) {
            steady[channel].fill(out, owner.joined(in.level[0], in.pan[0], channel), count);
            continue;
        }
        owner.join(in, channel, out.data(), count);
        if (!settled)
            owner.addRest(*ramps[channel], base, channel, out.data(), count);
        out.setConstant(false);
        steady[channel].forget();
    }
}
