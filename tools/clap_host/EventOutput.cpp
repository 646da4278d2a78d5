#include "clap_host/EventOutput.h"

#include <cstring>

EventOutput::EventOutput(std::size_t capacity)
{
    kept.reserve(capacity);
    table.ctx = this;
    table.try_push = [](const clap_output_events_t* list, const clap_event_header_t* event) {
        return static_cast<EventOutput*>(list->ctx)->push(event);
    };
}

void EventOutput::clear() noexcept
{
    kept.clear();
    ordered = true;
    refusedCount = 0;
}

bool EventOutput::push(const clap_event_header_t* event) noexcept
{
    if (kept.size() == kept.capacity() || event->size > sizeof(ClapEvent)) {
        ++refusedCount;
        return false;
    }
    if (!kept.empty() && event->time < kept.back().header.time)
        ordered = false;
    ClapEvent copy{};
    std::memcpy(&copy, event, event->size);
    kept.push_back(copy);
    return true;
}
