#pragma once

#include "abi/Clap.h"
#include "foundation/DeferredEventQueue.h"

/// Has a queue delivered on the host's main thread by the best of what the host offers: a descriptor that its
/// main loop watches; a timer of that loop; or the callback that it may be asked for, which some hosts never
/// make.
///
/// Descriptor and timer stay from construction to destruction: none is registered or taken away from within a
/// callback. Thread: main, but for what is marked.
class MainThreadDelivery : private DeferredEventQueue::Waker {
public:
    enum class Way { Descriptor, Timer, Callback };

    /// Both outlive this. To be made when the host may be asked for its extensions.
    MainThreadDelivery(const clap_host_t& clapHost, DeferredEventQueue& eventQueue);
    MainThreadDelivery(const MainThreadDelivery&) = delete;
    MainThreadDelivery& operator=(const MainThreadDelivery&) = delete;
    ~MainThreadDelivery() override;

    Way way() const noexcept { return chosen; }

    // What the host calls. True if the call was for this delivery.

    bool onDescriptor(int readable);
    bool onTimer(clap_id elapsed);

private:
    bool watchDescriptor();
    bool startTimer();
    void wake() noexcept REALTIME override;  // any

    const clap_host_t& host;
    DeferredEventQueue& queue;
    const clap_host_posix_fd_support_t* descriptors = nullptr;
    const clap_host_timer_support_t* timers = nullptr;
    int descriptor = -1;
    clap_id timer = CLAP_INVALID_ID;
    Way chosen = Way::Callback;
};
