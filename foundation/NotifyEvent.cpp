#include "foundation/NotifyEvent.h"

#include <algorithm>

void NotifyEvent::setHandler(std::unique_ptr<Handler> newHandler)
{
    std::swap(primaryHandler, newHandler);
    if (firing != 0 && newHandler)
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
    if (firing == 0)
        dropRemoved();
}

void NotifyEvent::fire(void* argument)
{
    ++firing;
    if (Handler* primary = primaryHandler.get())
        primary->invoke(argument);
    for (std::size_t i = handlers.size(); i-- > 0;) {
        if (Handler* next = handlers[i].get())
            next->invoke(argument);
    }
    if (--firing == 0 && !removed.empty())
        dropRemoved();
}

void NotifyEvent::dropRemoved()
{
    std::erase(handlers, nullptr);
    removed.clear();
}
