#pragma once

#include "platform/HostLoop.h"

#include <functional>

namespace gui {

class X11Interface;

/// Keeps an editor alive while the main thread waits for a choice: its paints, its timers and its ticks go
/// on, and those of all loops around this one. The root's lock has to be free.
class X11NestedLoop {
public:
    /// Runs until `isDone`, which is asked at least every 10 ms, or the window is lost.
    /// @param dialog  a second interface that is served too, or null
    /// @return false if the window is lost or the owner was destroyed
    static bool Run(X11Interface& owner, const std::function<bool()>& isDone, X11Interface* dialog = nullptr);
};

/// The loop of an interface that a nested loop serves by hand.
class ServedLoop : public HostLoop {
public:
    bool Watch(int, Client&) override { return true; }
    void Unwatch(int) override {}
    bool StartTimer(int, Client&) override { return true; }
    void StopTimer(Client&) override {}
    void RequestMainThread(Client&) noexcept override {}
    void Forget(Client&) override {}
};

}  // namespace gui
