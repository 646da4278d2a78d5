#pragma once

#include "TestHost.h"

#include <atomic>
#include <thread>

/// As much of a window manager as full screen and dialogs meet: it maps what asks for it, says that it can do
/// full screen, and then fills the monitor at the window's own place. It marks its clients as such.
class WindowManagerStub {
public:
    WindowManagerStub();
    ~WindowManagerStub();
    WindowManagerStub(const WindowManagerStub&) = delete;
    WindowManagerStub& operator=(const WindowManagerStub&) = delete;

    /// The window that was mapped last; 0 for none.
    xcb_window_t LastManaged() const { return lastManaged; }
    /// Asks a client to close, as its title bar's button does.
    void Close(xcb_window_t client);

private:
    void Run();
    void Manage(xcb_window_t client);
    void FillMonitor(xcb_window_t client);

    TestHost program{TestHost::Shows::Nothing};
    std::atomic<xcb_window_t> lastManaged{XCB_WINDOW_NONE};
    std::atomic<bool> ends{false};
    std::thread thread;
};
