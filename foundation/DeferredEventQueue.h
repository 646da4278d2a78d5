#pragma once

#include "foundation/AsyncEventQueue.h"
#include "foundation/LockFreeQueue.h"

#include <atomic>
#include <cstdint>

/// A queue for where somebody else runs the main loop: posting asks for a call of `deliver` on the queue's
/// own thread, and whoever gets there first delivers.
class DeferredEventQueue : public AsyncEventQueue {
public:
    /// Gets a call of `deliver` under way.
    class Waker {
    public:
        virtual ~Waker() = default;
        /// Once between two deliveries, however much is posted. Thread: any, and it may be the audio thread.
        virtual void wake() noexcept REALTIME = 0;
    };

    static constexpr int capacity = 1022;  // messages

    /// Null for none: messages then wait for a `deliver` that comes by itself. What waits already wakes a new
    /// one. Thread: that of the queue; the waker before may still be called by a post that is under way.
    void setWaker(Waker* newWaker) noexcept;

    bool post(std::int32_t kind, std::int64_t argument) noexcept REALTIME override;
    /// Asks for a delivery, be there messages or not. Thread: any.
    void wake() noexcept REALTIME;

    /// True if a delivery has been asked for and hasn't come yet. Thread: any.
    bool isAwaited() const noexcept { return awaited.load(); }
    /// Fires `received` for what waits, then `delivered`. What is posted meanwhile comes in the same call,
    /// but only so much of it that the call ends. Within a handler it does nothing. Thread: that of the
    /// queue.
    void deliver();

    /// Fired at the end of each delivery.
    NotifyEvent delivered;

private:
    LockFreeQueue<Message> messages{1024, 1024};  // never grows, so that a post takes no lock
    std::atomic<Waker*> waker{nullptr};
    std::atomic<bool> awaited{false};
    bool delivering = false;
};
