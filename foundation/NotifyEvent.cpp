#include "foundation/NotifyEvent.h"

#include <algorithm>

NotifyEvent::~NotifyEvent()
{
    for (Firing* run = firing; run; run = run->outer) {
        run->orphaned = true;
        if (run->outer)
            continue;
        run->kept = std::move(handlers);
        run->kept.push_back(std::move(primaryHandler));
        for (auto& handler : removed)
            run->kept.push_back(std::move(handler));
    }
}

void NotifyEvent::setHandler(std::unique_ptr<Handler> newHandler)
{
    std::swap(primaryHandler, newHandler);
    if (firing && newHandler)
        removed.push_back(std::move(newHandler));
}

void NotifyEvent::addHandler(std::unique_ptr<Handler> newHandler)
{
    handlers.push_back(std::move(newHandler));
}

void NotifyEvent::removeHandler(const Handler& probe)
{
    for (std::size_t i = handlers.size(); i-- > 0;) {
        if (!handlers[i] || !handlers[i]->equals(probe))
            continue;
        // The place stays while the event fires, so that the walk doesn't lose its way.
        removed.push_back(std::move(handlers[i]));
        break;
    }
    if (!firing)
        dropRemoved();
}

void NotifyEvent::fire(void* argument)
{
    Firing run{firing, false, {}};
    firing = &run;
    if (Handler* primary = primaryHandler.get())
        primary->invoke(argument);
    for (std::size_t i = run.orphaned ? 0 : handlers.size(); i-- > 0;) {
        if (Handler* next = handlers[i].get())
            next->invoke(argument);
        if (run.orphaned)
            return;
    }
    if (run.orphaned)
        return;
    firing = run.outer;
    if (!firing && !removed.empty())
        dropRemoved();
}

void NotifyEvent::dropRemoved()
{
    std::erase(handlers, nullptr);
    removed.clear();
}
