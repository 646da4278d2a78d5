#pragma once

#include <atomic>
#include <cstdint>

/// What all engines of one process share. It is made with the first engine and goes with the last one.
class ProcessWideData {
public:
    /// Counts one engine. True for the first of the process. Thread: main.
    static bool acquire();
    /// True if it was the last one. Thread: main.
    static bool release();

    /// Host blocks processed by all engines together, for telling which of them played last. Thread: any.
    static std::uint32_t nextBlockNumber() noexcept;
};
