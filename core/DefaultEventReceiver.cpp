#include "core/DefaultEventReceiver.h"

#include <utility>

DefaultEventReceiver::DefaultEventReceiver(std::unique_ptr<AbstractChannelEventReceiver> receiver)
{
    entries[allChannels] = std::move(receiver);
}

void DefaultEventReceiver::propertyChanged(AbstractProperty&)
{
    std::swap(entries[static_cast<std::size_t>(present)], entries[static_cast<std::size_t>(entry.value())]);
    present = entry.value();
}
