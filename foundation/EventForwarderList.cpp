#include "foundation/EventForwarderList.h"

#include <utility>

EventForwarderList::Forwarder& EventForwarderList::add(Target& target, std::int64_t argument)
{
    forwarders.push_back(std::make_unique<Forwarder>(Forwarder{&target, argument}));
    return *forwarders.back();
}

void EventForwarderList::raise(Forwarder& forwarder)
{
    if (!forwarder.pending) {
        forwarder.pending = true;
        pendingForwarders.push_back(&forwarder);
    }
    changed();
}

void EventForwarderList::update()
{
    const std::vector<Forwarder*> due = std::exchange(pendingForwarders, {});
    for (Forwarder* forwarder : due) {
        forwarder->pending = false;
        forwarder->target->forward(forwarder->argument);
    }
}
