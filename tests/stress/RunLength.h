#pragma once

#include <chrono>
#include <cstdint>

// How long random tests run, and by which numbers. Both are for people to set: SORDELIN_SECONDS and
// SORDELIN_SEED.

/// @param quick  seconds, where nothing is set; the sanitizers take what they need of it
double secondsToRun(double quick);
/// 1 where nothing is set, but for a run of a set length, which then is another one each time. It is printed,
/// so that what a run finds can be run again.
std::uint32_t seedToRun();

/// Counts down on the wall clock.
class RunClock {
public:
    explicit RunClock(double seconds)
        : end(std::chrono::steady_clock::now() +
              std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                  std::chrono::duration<double>(seconds)))
    {}
    bool isRunning() const { return std::chrono::steady_clock::now() < end; }

private:
    std::chrono::steady_clock::time_point end;
};
