#pragma once

#include "clap_host/ClapParameters.h"
#include "clap_host/EventList.h"
#include "stress/Random.h"

#include <vector>

/// What a busy but orderly host sends to an instance: automation of any parameter, notes, controllers, bends
/// and program changes, in order of time.
class RandomEvents {
public:
    /// @param automated  parameters to move; outlives this
    RandomEvents(const std::vector<ClapParameter>& automated, Random& numbers)
        : parameters(automated), random(numbers)
    {}

    /// The events of the next block, none to a few, and now and then all at once.
    /// @param frames  at least 1
    void fill(EventList& events, std::uint32_t frames);

private:
    void addAutomation(EventList& events, std::uint32_t time);
    void addMidi(EventList& events, std::uint32_t time);

    const std::vector<ClapParameter>& parameters;
    Random& random;
};
