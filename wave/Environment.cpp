#include "wave/Environment.h"

#include "foundation/Tolerance.h"
#include "wave/Producer.h"
#include "wave/WorkingMemory.h"

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

void Environment::shareMemory(AlignedBuffer& buffer)
{
    constexpr int lineLength = static_cast<int>(AlignedBuffer::alignment / sizeof(float));
    const int length = (buffer.size() + lineLength - 1) / lineLength * lineLength;
    if (sharedLength + length > WorkingMemory::length)
        return;
    sharedBuffers.push_back({&buffer, buffer.data(), sharedLength});
    sharedLength += length;
    if (workingMemory)
        buffer.exchange(workingMemory + sharedBuffers.back().offset);
}

void Environment::withdraw(const AlignedBuffer& buffer) noexcept
{
    const auto place = std::find_if(sharedBuffers.begin(), sharedBuffers.end(),
                                    [&](const SharedBuffer& s) { return s.buffer == &buffer; });
    if (place == sharedBuffers.end())
        return;
    place->buffer->exchange(place->own);
    sharedBuffers.erase(place);
}

void Environment::beginWork() noexcept
{
    bool isWarm = false;
    float* const lent = WorkingMemory::lend(this, isWarm);
    working = lent != nullptr;
    if (!isWarm)
        trail.fetch();
    if (lent != workingMemory)
        placeShared(lent);
}

void Environment::endWork() noexcept
{
    // The buffers stay where they are: most often the next call finds the same memory.
    if (working)
        WorkingMemory::takeBack(workingMemory);
    working = false;
    if (trail.isDue())
        noteTrail();
}

void Environment::noteTrail() noexcept
{
    for (const Producer* component : components) {
        if (component->isComputed())
            component->noteOn(trail);
    }
}

void Environment::placeShared(float* memory) noexcept
{
    for (const SharedBuffer& shared : sharedBuffers)
        shared.buffer->exchange(memory ? memory + shared.offset : shared.own);
    workingMemory = memory;
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
    placeShared(nullptr);
    for (const Child& child : children)
        child.environment->markDestroying();
}

void Environment::componentAdded(Producer& component)
{
    // Room for all of them, so that enabling a component on the audio thread never allocates.
    components.push_back(&component);
    if (schedule.capacity() < components.size()) {
        schedule.reserve(2 * components.size());
        resettables.reserve(2 * components.size());
    }
}

void Environment::componentRemoved(Producer& component) noexcept
{
    if (destroying)
        return;
    std::erase(components, &component);
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
