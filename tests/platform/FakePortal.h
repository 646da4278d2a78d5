#pragma once

#include <dbus/dbus.h>

#include <atomic>
#include <string>
#include <thread>

#include <sys/types.h>

/// A session bus of the test's own, in the environment while it exists, with a file dialog that answers by
/// itself.
class FakePortal {
public:
    enum class Behaviour { Chooses, Cancels, Refuses, Vanishes };

    /// @param uri  what is chosen
    FakePortal(Behaviour how, std::string uri);
    ~FakePortal();
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    bool IsRunning() const { return bus != nullptr; }
    // What was asked for, once it was.
    std::string method, window, title, folder, name, firstPattern;
    bool directory = false;

private:
    void StartBus();
    void Run();
    void Answer(DBusMessage* call);
    void ReadOptions(DBusMessageIter options);

    Behaviour behaviour;
    std::string answer;
    pid_t daemon = -1;
    DBusConnection* bus = nullptr;
    std::atomic<bool> stopping{false};
    std::thread thread;
};
