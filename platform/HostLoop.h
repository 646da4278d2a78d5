#pragma once

namespace gui {

/// What the editor gets of the main loop that it runs in. Whoever embeds it implements this: a host's
/// descriptors and timers, or a loop of a program's own. Thread: main, unless said otherwise.
class HostLoop {
public:
    class Client {
    public:
        virtual ~Client() = default;
        /// The loop came by, for whichever reason. Thread: main.
        virtual void LoopCalled() = 0;
    };

    virtual ~HostLoop() = default;
    /// Calls whenever `descriptor` can be read. False if the loop watches no descriptors.
    virtual bool Watch(int descriptor, Client& client) = 0;
    virtual void Unwatch(int descriptor) = 0;
    /// Calls at least every `periodMs`. False if the loop has no timers. One timer per client.
    virtual bool StartTimer(int periodMs, Client& client) = 0;
    virtual void StopTimer(Client& client) = 0;
    /// Asks for one call, soon. Some loops never make it. Thread: any.
    virtual void RequestMainThread(Client& client) noexcept = 0;
    /// No call reaches the client from now on, whatever was asked for.
    virtual void Forget(Client& client) = 0;
};

}  // namespace gui
