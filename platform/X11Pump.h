#pragma once

#include "platform/HostLoop.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace gui {

/// Brings an interface its turns on the main thread: one for each 10 ms tick and one whenever its display
/// has something to say.
///
/// All that it waits for lies behind one descriptor, which never changes, so nothing has to be taken out of
/// a host's loop from within the host's callback, and a display that went away doesn't keep the host busy.
///
///     display ---+
///     tick clock +--> one descriptor --> the loop's descriptors; else its timer; else a thread of ours
///     more ...---+                       that does nothing but ask for callbacks
class X11Pump : private HostLoop::Client {
public:
    static constexpr int tickMs = 10;

    class Sink {
    public:
        virtual ~Sink() = default;
        /// The sink may delete the pump in either.
        virtual void PumpTick() = 0;
        virtual void PumpReadable() = 0;
    };

    /// Both outlive the pump.
    X11Pump(HostLoop& hostLoop, Sink& pumpSink);
    ~X11Pump() override;
    X11Pump(const X11Pump&) = delete;
    X11Pump& operator=(const X11Pump&) = delete;

    void Add(int descriptor);
    void Remove(int descriptor);
    /// The clock of the ticks. A pump starts without.
    void RunTicks(bool run);

    /// Readable when `Serve` has something to do: for loops of our own.
    int Descriptor() const { return epoll; }
    /// Does what waits, without waiting.
    void Serve();
    /// Waits until something is there, at most `timeoutMs`, for any of these pumps.
    static void Wait(const std::vector<X11Pump*>& pumps, int timeoutMs);

private:
    void LoopCalled() override { Serve(); }
    bool TakeTick();
    void StartThread();
    void RunThread();

    HostLoop& loop;
    Sink& sink;
    int epoll = -1;
    int clock = -1;  // a timer descriptor
    int stop = -1;   // both for the thread
    int served = -1;
    bool watched = false;
    bool timed = false;
    std::thread thread;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

}  // namespace gui
