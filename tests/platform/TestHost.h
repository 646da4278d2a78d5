#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Another program on the display: a host with its window, a hand at mouse and keyboard, and somebody who
/// looks at the screen.
class TestHost {
public:
    enum class Shows { Window, SeeThroughWindow, Nothing };

    /// The window lies at (100, 50) and is 400 x 300 large; a see-through one has 32 bits a pixel.
    explicit TestHost(Shows what = Shows::Window);
    ~TestHost();
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    operator xcb_connection_t*() const { return connection; }
    xcb_window_t Window() const { return window; }
    xcb_window_t Root() const { return screen->root; }
    void DestroyWindow();
    void ResizeWindow(int width, int height);
    void MoveWindow(int x, int y);
    void TakeFocus();
    xcb_window_t FocusOwner() const;

    // Input, at points of the screen.
    void Move(int x, int y);
    void Button(int button, bool down);
    void Click(int x, int y, int button = 1);
    /// Puts a symbol on a key that had none.
    void AddKey(std::uint32_t symbol);
    /// The key of a symbol on the first level of the layout.
    void Key(std::uint32_t symbol, bool down);
    void Type(std::uint32_t symbol);

    /// 0xRRGGBB of the screen.
    std::uint32_t Pixel(int x, int y) const;
    /// All bits of a window's pixels, row by row.
    std::vector<std::uint32_t> Picture(xcb_window_t of) const;
    /// Visible windows of the screen that are ours to the window manager: popups, dialogs.
    std::vector<xcb_window_t> TopWindows() const;
    std::array<int, 4> Geometry(xcb_window_t of) const;  // x, y, width, height
    xcb_window_t FirstChild(xcb_window_t of) const;
    std::string Property(xcb_window_t of, const char* name, bool remove = false) const;
    xcb_atom_t Atom(const char* name) const;
    xcb_generic_event_t* Poll() { return xcb_poll_for_event(connection); }
    /// The next event of a kind, to be freed; null after 5 s.
    xcb_generic_event_t* WaitFor(int kind);
    void Sync() const;

    /// Polls until `condition`; false after 5 s. For threads beside the editor's.
    static bool Wait(const std::function<bool()>& condition);

private:
    void CreateWindow(Shows what);
    void Fake(int type, int detail, int x = 0, int y = 0);

    xcb_connection_t* connection;
    xcb_screen_t* screen = nullptr;
    xcb_window_t window = XCB_WINDOW_NONE;
};
