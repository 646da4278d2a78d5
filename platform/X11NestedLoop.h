#pragma once

#include "platform/HostLoop.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace gui {

class X11Interface;

/// Keeps all interfaces of the thread alive while it waits for a choice: their paints, their timers and their
/// ticks go on. The root's lock has to be free.
class X11NestedLoop {
public:
    /// Runs until `isDone`, which is asked at least every 10 ms, or the owner's window is lost.
    /// @return false if the window is lost or the owner was destroyed
    static bool Run(X11Interface& owner, const std::function<bool()>& isDone);
};

/// While a dialog waits for its answer, mouse and keys do nothing in all other windows of the thread.
class X11InputBlock {
public:
    /// @param answering  the dialog; null for one of another program's
    explicit X11InputBlock(const X11Interface* answering);
    ~X11InputBlock();
    X11InputBlock(const X11InputBlock&) = delete;
    X11InputBlock& operator=(const X11InputBlock&) = delete;

private:
    std::vector<std::pair<X11Interface*, std::shared_ptr<const bool>>> blocked;  // with their liveness
};

/// The loop of an interface that nested loops serve.
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
