#include "wave/Producer.h"

#include "wave/EngineMemory.h"

#include <new>

namespace wave {

void* Component::operator new(std::size_t bytes)
{
    void* const place = EngineMemory::take(bytes);
    return place ? place : throw std::bad_alloc();
}

void Component::operator delete(void* place, std::size_t bytes) noexcept
{
    EngineMemory::giveBack(place, bytes);
}

Producer::Producer(Environment& owner, OwnBlock ownBlockKind) : env(owner), current(&owner.silentBlock())
{
    if (ownBlockKind != OwnBlock::None)
        own.emplace(owner);
    env.componentAdded(*this);
    if (ownBlockKind == OwnBlock::Passing)
        env.shareMemory(*own);
}

Producer::~Producer()
{
    if (own)
        env.withdraw(*own);
    env.componentRemoved(*this);
}

float Producer::currentValue() noexcept { return current ? (*current)[0] : 0.0f; }

void Producer::setEnabled(bool newEnabled) noexcept
{
    if (newEnabled == enabled)
        return;
    if (enabled && scheduled)
        env.removeScheduled(*this);
    enabled = newEnabled;
    if (!enabled)
        return;
    if (scheduled)
        env.insertScheduled(*this, order);
    if (resettable)
        reset();
}

void Producer::registerForReset()
{
    if (resettable)
        return;
    env.resettables.push_back(this);
    resettable = true;
}

void Producer::runAlways(int newOrder)
{
    if (enabled && scheduled)
        env.removeScheduled(*this);
    if (enabled)
        env.insertScheduled(*this, newOrder);
    order = newOrder;
    scheduled = true;
}

void Producer::noteOn(MemoryTrail& trail) const noexcept
{
    constexpr std::size_t nearMembers = 192;  // bytes; those of most components
    trail.note(this, nearMembers);
    trail.note(current, sizeof(Block));
    trail.note(current->data(), sizeof(float));
}

void Producer::runScheduled(int count) noexcept
{
    if (order == 0)
        compute(count, Environment::SecondPass);
    else if (!isComputed())
        compute(count, Environment::Unread);
}

}  // namespace wave
