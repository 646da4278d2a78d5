#include "wave/Environment.h"

#include "foundation/Tolerance.h"
#include "wave/Producer.h"

#include <algorithm>

namespace wave {

Environment::Environment()
    : scratchBlocks{std::make_unique<Block>(*this), std::make_unique<Block>(*this)},
      silence(*this, 0.0f),
      unity(*this, 1.0f)
{}

void Environment::nextGeneration() noexcept
{
    ++generation;
    for (const Child& child : children)
        child.environment->nextGeneration();
}

void Environment::run(int count, bool skipSchedule) noexcept
{
    if (!skipSchedule) {
        for (Producer* component : schedule)
            component->runScheduled(count);
    }
    clock += static_cast<std::uint64_t>(count);
    for (const Child& child : children)
        child.environment->run(count, skipSchedule);
}

void Environment::reset(Reset kind) noexcept
{
    lastSoftReset = clock;
    if (kind != Reset::Soft) {
        lastHardReset = clock;
        for (Producer* component : resettables) {
            if (kind == Reset::Everything || component->isEnabled())
                component->reset();
        }
    }
    if (kind == Reset::EnabledHere)
        return;
    for (const Child& child : children)
        child.environment->reset(kind);
}

void Environment::setSampleRate(float newRate)
{
    const float oldRate = rate;
    rate = newRate;
    for (const Child& child : children)
        child.environment->setSampleRate(newRate * static_cast<float>(child.rateFactor));
    if (isNear(oldRate, newRate))
        return;
    reset(Reset::Everything);
    sampleRateChanged.fire(this);
}

bool Environment::isIdle() const noexcept
{
    return std::all_of(resettables.begin(), resettables.end(),
                       [](const Producer* p) { return p->isIdle(); }) &&
           std::all_of(children.begin(), children.end(),
                       [](const Child& c) { return c.environment->isIdle(); });
}

void Environment::addChild(Environment& child, int rateFactor)
{
    children.push_back({&child, rateFactor});
    child.setSampleRate(rate * static_cast<float>(rateFactor));
}

void Environment::setDisplayActive(bool active) noexcept
{
    displayActive = active;
    for (const Child& child : children)
        child.environment->setDisplayActive(active);
}

void Environment::markDestroying() noexcept
{
    destroying = true;
    for (const Child& child : children)
        child.environment->markDestroying();
}

void Environment::componentAdded()
{
    // Room for all of them, so that enabling a component on the audio thread never allocates.
    ++componentCount;
    if (schedule.capacity() < componentCount) {
        schedule.reserve(2 * componentCount);
        resettables.reserve(2 * componentCount);
    }
}

void Environment::componentRemoved(Producer& component) noexcept
{
    --componentCount;
    if (destroying)
        return;
    if (component.scheduled && component.enabled)
        removeScheduled(component);
    std::erase(resettables, &component);
}

void Environment::insertScheduled(Producer& component, int order)
{
    auto place = schedule.end();
    if (order == 0)
        place = schedule.begin();
    else if (order == 1)
        place = schedule.begin() + leadCount;
    schedule.insert(place, &component);
    if (order == 0)
        ++leadCount;
}

void Environment::removeScheduled(Producer& component) noexcept
{
    const auto place = std::find(schedule.begin(), schedule.end(), &component);
    if (place == schedule.end())
        return;
    schedule.erase(place);
    if (component.order == 0)
        --leadCount;
}

}  // namespace wave
