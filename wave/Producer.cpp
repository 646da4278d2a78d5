#include "wave/Producer.h"

namespace wave {

Producer::Producer(Environment& owner, OwnBlock ownBlockKind)
    : env(owner),
      own(ownBlockKind == OwnBlock::Make ? std::make_unique<Block>(owner) : nullptr),
      current(&owner.silentBlock())
{
    env.componentAdded();
}

Producer::~Producer() { env.componentRemoved(*this); }

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

void Producer::runScheduled(int count) noexcept
{
    if (order == 0)
        compute(count, Environment::SecondPass);
    else if (!isComputed())
        compute(count, Environment::Unread);
}

}  // namespace wave
