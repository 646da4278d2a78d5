#pragma once

#include "CallCounter.h"
#include "clap_host/ClapInstance.h"
#include "stress/MainThreadUser.h"

#include <atomic>
#include <cstdint>

/// Busy random use of an instance, by a host that breaks no rule, with its audio thread under watch.
class RealtimeUse {
public:
    struct Figures {
        calls::Counts counts;  // within the plug-in, on the audio thread
        long blocks = 0;
        double seconds = 0.0;  // of sound
    };

    RealtimeUse(ClapInstance& used, Random& numbers, std::vector<std::string> presets);

    /// Plays for one stretch at one rate, with the main thread at work beside it.
    /// @param seconds  on the wall clock
    void playAtSomeRate(double seconds);
    const Figures& figures() const { return totals; }

private:
    // Thread: audio.
    void play(std::uint32_t seed, double sampleRate, std::uint32_t longest);

    ClapInstance& instance;
    Random& random;
    MainThreadUser user;
    std::atomic<bool> ending{false};
    Figures totals;
};
