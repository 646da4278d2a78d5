#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Realtime.h"

#include <cstdint>

/// Brings messages from any thread to the one that made the queue.
class AsyncEventQueue {
public:
    struct Message {
        std::int32_t kind;  // its users' own numbers
        std::int64_t argument;
    };

    virtual ~AsyncEventQueue() = default;
    /// Neither blocks nor allocates. False, and the message is dropped, while too many wait. Thread: any.
    virtual bool post(std::int32_t kind, std::int64_t argument) noexcept REALTIME = 0;

    /// Fired with each `Message`, in the order of posting. Thread: that of the queue.
    NotifyEvent received;
};
