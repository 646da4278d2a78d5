#include "modulation/ModulationDisplay.h"

namespace {

constexpr float updatesPerSecond = 60.0f;

}  // namespace

ModulationDisplay::ModulationDisplay(wave::Environment& owner, ModulationMatrix& shownMatrix)
    : environment(owner),
      matrix(shownMatrix),
      distances(static_cast<std::size_t>(shownMatrix.targetCount()), 0.0f)
{}

void ModulationDisplay::update() noexcept
{
    if (!environment.isDisplayActive())
        return;
    const std::uint64_t now = environment.now();
    if (static_cast<float>(now - lastTime) < environment.sampleRate() / updatesPerSecond)
        return;
    for (int target = 0; target < matrix.targetCount(); ++target)
        distances[static_cast<std::size_t>(target)] = distanceOf(target);
    lastTime = now;
}

/// 0 for a target that nobody reads at present.
float ModulationDisplay::distanceOf(int target) const noexcept
{
    wave::Producer& modulated = *matrix.producerForTarget(target);
    if (!modulated.isComputed())
        return 0.0f;
    ModulationMatrix::Target& shown = matrix.target(target);
    return (modulated.currentValue() - shown.forwarder.currentValue()) / shown.scale();
}
