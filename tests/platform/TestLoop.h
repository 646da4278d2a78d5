#pragma once

#include "platform/HostLoop.h"

#include <poll.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <vector>

/// A host's main loop that offers as much as it is told to.
class TestLoop : public gui::HostLoop {
public:
    enum class Offers { Descriptors, Timers, Callbacks };
    explicit TestLoop(Offers what = Offers::Descriptors) : offers(what) {}

    bool Watch(int descriptor, Client& client) override
    {
        if (offers != Offers::Descriptors)
            return false;
        watched[descriptor] = &client;
        return true;
    }
    void Unwatch(int descriptor) override { watched.erase(descriptor); }
    bool StartTimer(int, Client& client) override
    {
        if (offers != Offers::Timers)
            return false;
        timer = &client;
        return true;
    }
    void StopTimer(Client&) override { timer = nullptr; }
    void RequestMainThread(Client& client) noexcept override { requested = &client; }
    void Forget(Client&) override { requested = nullptr; }

    /// Runs until `condition`; false after 10 s.
    bool RunUntil(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            Turn();
        }
        return true;
    }
    void RunFor(int milliseconds)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        while (std::chrono::steady_clock::now() < end)
            Turn();
    }
    int Calls() const { return calls; }
    bool IsIdle() const { return watched.empty() && !timer && !requested; }

private:
    void Turn()
    {
        constexpr int turnMs = 5;
        std::vector<pollfd> waits;
        for (const auto& [descriptor, client] : watched)
            waits.push_back({descriptor, POLLIN, 0});
        poll(waits.data(), waits.size(), turnMs);
        for (const pollfd& wait : waits)
            if (wait.revents && watched.contains(wait.fd))
                ++calls, watched[wait.fd]->LoopCalled();
        if (timer)
            ++calls, timer->LoopCalled();
        if (Client* client = requested.exchange(nullptr))
            ++calls, client->LoopCalled();
    }

    Offers offers;
    std::map<int, Client*> watched;
    Client* timer = nullptr;
    std::atomic<Client*> requested{nullptr};
    int calls = 0;
};
