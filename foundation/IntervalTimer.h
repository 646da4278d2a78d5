#pragma once

#include <cstdint>
#include <memory>

/// Measures the time since it was made or last restarted. One thread at a time.
class IntervalTimer {
public:
    virtual ~IntervalTimer() = default;
    /// Milliseconds, right up to 2^32 - 1 of them: some 49 days.
    virtual std::uint32_t elapsedMs() const noexcept = 0;
    virtual void restart() noexcept = 0;
};

/// Milliseconds of a clock that never goes back. Where it starts doesn't matter, and it wraps at 2^32.
using TickMs = std::uint32_t (*)() noexcept;

/// The system's own tick: setting the time of day doesn't move it.
std::uint32_t systemTickMs() noexcept;

/// A timer that is running.
std::unique_ptr<IntervalTimer> createIntervalTimer(TickMs tick = systemTickMs);
