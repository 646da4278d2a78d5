#include "modulation/ModulationDisplay.h"

#include "foundation/BinaryDataWriter.h"

namespace {

constexpr float updatesPerSecond = 60.0f;
constexpr std::uint32_t patienceMs = 250;

}  // namespace

ModulationDisplay::ModulationDisplay(wave::Environment& owner, ModulationMatrix& shownMatrix,
                                     std::function<float(int)> sourceValue)
    : environment(owner),
      matrix(shownMatrix),
      valueOfSource(std::move(sourceValue)),
      targets(static_cast<std::size_t>(shownMatrix.targetCount())),
      sources(static_cast<std::size_t>(shownMatrix.sourceCount()))
{}

void ModulationDisplay::update() noexcept
{
    if (!environment.isDisplayActive() || requests.load(std::memory_order_relaxed) == 0)
        return;
    const std::uint64_t now = environment.now();
    if (static_cast<float>(now - lastTime) < environment.sampleRate() / updatesPerSecond)
        return;
    for (std::size_t target = 0; target < targets.size(); ++target)
        targets[target].store(distanceOf(static_cast<int>(target)), std::memory_order_relaxed);
    for (std::size_t source = 0; source < sources.size(); ++source)
        sources[source].store(valueOfSource(static_cast<int>(source)), std::memory_order_relaxed);
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

void ModulationDisplay::collect(BinaryDataWriter& writer)
{
    if (const unsigned asked = requests.load(); asked != requestsSeen) {
        requestsSeen = asked;
        sinceRequest->restart();
    } else if (asked != 0 && sinceRequest->elapsedMs() > patienceMs) {
        requests = requestsSeen = 0;
    }
    // An update that was under way when the display ended may have left values behind.
    const bool shown = requestsSeen != 0;
    for (const auto* values : {&targets, &sources}) {
        for (const std::atomic<float>& value : *values)
            writer.writeFloat(shown ? value.load(std::memory_order_relaxed) : 0.0f);
    }
}
