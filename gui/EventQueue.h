#pragma once

#include "foundation/LockFreeQueue.h"

#include <cstdint>

namespace gui {

/// Brings other threads' events to the interface. Queue 1 is served by the main thread only, queue 0 by
/// whichever thread runs the frame.
class EventQueue {
public:
    static constexpr int frameQueue = 0;
    static constexpr int mainQueue = 1;
    /// The code that says that posted updates wait.
    static constexpr std::uint32_t postedUpdates = 0xFFFF0000;
    static constexpr std::uint32_t capacity = 1024;

    struct Entry {
        std::uint32_t code = 0;
        std::uint64_t value = 0;
    };

    /// 0 if the queue is full: the event is lost. Thread: any; lock-free.
    int Push(int queue, const Entry& entry) noexcept { return queues[queue].push(entry); }
    bool Pop(int queue, Entry& entry) noexcept { return queues[queue].pop(entry); }

private:
    static constexpr std::uint32_t nodes = capacity + 2;  // two never hold data

    LockFreeQueue<Entry> queues[2] = {{nodes, nodes}, {nodes, nodes}};
};

}  // namespace gui
