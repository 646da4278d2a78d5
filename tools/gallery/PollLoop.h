#pragma once

#include "platform/HostLoop.h"

#include <vector>

namespace gallery {

/// A main loop of a program that has nothing else to do. Thread: one.
class PollLoop : public gui::HostLoop {
public:
    bool Watch(int descriptor, Client& client) override;
    void Unwatch(int descriptor) override;
    bool StartTimer(int, Client&) override { return false; }  // descriptors are enough
    void StopTimer(Client&) override {}
    void RequestMainThread(Client&) noexcept override {}
    void Forget(Client& client) override;

    /// Until Quit.
    void Run();
    void Quit() { running = false; }

private:
    struct Watched {
        int descriptor;
        Client* client;
    };

    std::vector<Watched> watched;
    bool running = false;
};

}  // namespace gallery
