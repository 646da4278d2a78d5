#pragma once

#include "clap_host/ClapEvent.h"

#include <cstddef>
#include <vector>

/// The events that a host gives to `process` or `flush`, always in order of time.
///
/// Events of one time keep the order in which they were added. Adding allocates only beyond the reserved
/// number.
class EventList {
public:
    explicit EventList(std::size_t reserved = 256);
    EventList(const EventList&) = delete;
    EventList& operator=(const EventList&) = delete;

    void reserve(std::size_t count) { events.reserve(count); }
    /// Keeps the memory.
    void clear() noexcept { events.clear(); }
    void add(const ClapEvent& event);

    bool empty() const noexcept { return events.empty(); }
    std::size_t size() const noexcept { return events.size(); }
    /// What the plug-in reads. Valid as long as this object.
    const clap_input_events_t* record() const noexcept { return &table; }

private:
    std::vector<ClapEvent> events;
    clap_input_events_t table{};
};
