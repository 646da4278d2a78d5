#include "clap_host/EventList.h"

#include <algorithm>

EventList::EventList(std::size_t reserved)
{
    events.reserve(reserved);
    table.ctx = this;
    table.size = [](const clap_input_events_t* list) {
        return static_cast<std::uint32_t>(static_cast<const EventList*>(list->ctx)->events.size());
    };
    table.get = [](const clap_input_events_t* list, std::uint32_t index) -> const clap_event_header_t* {
        const auto& all = static_cast<const EventList*>(list->ctx)->events;
        return index < all.size() ? &all[index].header : nullptr;
    };
}

void EventList::add(const ClapEvent& event)
{
    const auto later = [](const ClapEvent& a, const ClapEvent& b) { return a.header.time < b.header.time; };
    events.insert(std::ranges::upper_bound(events, event, later), event);
}
