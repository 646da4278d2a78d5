#include "modulation/LevelPanTarget.h"

#include <algorithm>

LevelPanTarget::LevelPanTarget(wave::Environment& environment, ModulationMatrix& matrix, int levelId,
                               int panId, Mode joinMode)
    : levelTarget(matrix.target(levelId)),
      panTarget(matrix.target(panId)),
      mode(joinMode),
      first(environment, 0.0f),
      second(environment, 0.0f)
{
    levelTarget.changeListener = this;
    panTarget.changeListener = this;
    const ModulationRange& range = levelTarget.range;
    first.parameter.setRange(range.lower, range.upper, range.span);
    second.parameter.setRange(range.lower, range.upper, range.span);
    baseValueChanged();
}

void LevelPanTarget::baseValueChanged() noexcept
{
    const float level = levelTarget.parameterSignal();
    const float pan = panTarget.parameterSignal();
    first.assign(mode == Mode::Add ? level + pan : level - std::max(pan, 0.0f) * level);
    second.assign(mode == Mode::Add ? level - pan : (std::min(pan, 0.0f) + 1.0f) * level);
}
