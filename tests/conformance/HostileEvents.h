#pragma once

#include "abi/Clap.h"
#include "stress/Random.h"

#include <cstddef>
#include <memory>
#include <vector>

/// A list of events as no orderly host sends it: of any space, type and size, with any value, at any time, in
/// any order, some of them null.
///
/// Each event has just as much memory as its size says, so that the address sanitizer sees who reads on.
class HostileEvents {
public:
    /// @param parameterCount  of the plug-in
    HostileEvents(Random& numbers, std::uint32_t parameterCount);
    HostileEvents(const HostileEvents&) = delete;
    HostileEvents& operator=(const HostileEvents&) = delete;

    /// Makes another list. @param frames  of the block
    void fill(std::uint32_t frames);
    const clap_input_events_t* record() const { return &table; }

private:
    void add(std::uint32_t frames);
    /// Keeps the first `size` bytes of an event, at least its header.
    template <class Event>
    void keep(Event event, std::uint16_t type, std::uint32_t frames);
    double strangeValue();

    Random& random;
    std::uint32_t parameters;
    std::vector<std::unique_ptr<std::byte[]>> events;
    clap_input_events_t table{};
};
