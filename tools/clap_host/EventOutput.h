#pragma once

#include "clap_host/ClapEvent.h"

#include <cstddef>
#include <vector>

/// Takes what a plug-in sends out of `process` or `flush`: parameter values, gestures, notes and MIDI.
///
/// It never allocates after construction: a full list refuses, as CLAP allows.
class EventOutput {
public:
    explicit EventOutput(std::size_t capacity = 1024);
    EventOutput(const EventOutput&) = delete;
    EventOutput& operator=(const EventOutput&) = delete;

    void clear() noexcept;

    /// In the order of arrival.
    const std::vector<ClapEvent>& events() const noexcept { return kept; }
    /// False if an event came before its predecessor's time, which CLAP forbids.
    bool inOrder() const noexcept { return ordered; }
    /// Events that found no room or are of a kind not kept here.
    std::size_t refused() const noexcept { return refusedCount; }

    const clap_output_events_t* record() const noexcept { return &table; }

private:
    bool push(const clap_event_header_t* event) noexcept;

    std::vector<ClapEvent> kept;
    bool ordered = true;
    std::size_t refusedCount = 0;
    clap_output_events_t table{};
};
