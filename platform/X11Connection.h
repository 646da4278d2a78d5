#pragma once

#include "platform/X11Atoms.h"

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace gui {

/// A reply or an event, which the library allocates.
struct X11Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using X11Reply = std::unique_ptr<T, X11Free>;
using X11Event = X11Reply<xcb_generic_event_t>;

/// The kind of an event, without the bit that says that another program sent it.
inline int EventKind(const xcb_generic_event_t& event) { return event.response_type & 0x7F; }

/// A connection to the display, of an interface's own: what it does, its errors and its end concern nobody
/// else in the process. When the display goes away, every operation does nothing. Thread: main.
class X11Connection {
public:
    /// A window's property, as bytes.
    struct PropertyValue {
        xcb_atom_t type = XCB_ATOM_NONE;
        int format = 0;  // bits of an item: 8, 16 or 32; 0 if there is no such property
        std::string bytes;

        std::vector<std::uint32_t> Items() const;  // of format 32
    };
    /// What the display's pictures look like that windows of ours get.
    struct Visual {
        xcb_visualid_t id = 0;
        int depth = 24;
    };
    /// Where an extension's events begin; 0 if the display hasn't got it.
    struct Extensions {
        int sharedMemory = 0;  // 1: there; 2: takes descriptors
        int sharedMemoryEvent = 0;
        int randrEvent = 0;
        int fixesEvent = 0;
        int keyboardEvent = 0;
        int inputOpcode = 0;  // of XInput 2.1 and up
    };

    /// Null if there is no display, or none that shows 24 or 32 bits a pixel.
    static std::unique_ptr<X11Connection> Open();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    operator xcb_connection_t*() const { return connection; }
    const xcb_screen_t& Screen() const { return *screen; }
    xcb_window_t RootWindow() const { return screen->root; }
    const Visual& WindowVisual() const { return visual; }
    xcb_colormap_t Colormap() const { return colormap; }
    const Extensions& Has() const { return extensions; }
    xcb_atom_t Atom(X11Atom name) const { return atoms[static_cast<std::size_t>(name)]; }
    int Descriptor() const;
    bool IsLost() const;
    void Flush() const { xcb_flush(connection); }

    /// Null when there is none. Errors are events too, of kind 0.
    X11Event NextEvent();
    /// Waits for an event that `accepts` wants; others stay for `NextEvent`. Null after `timeoutMs`, or when
    /// the display is gone.
    X11Event WaitFor(const std::function<bool(const xcb_generic_event_t&)>& accepts, int timeoutMs);

    PropertyValue GetProperty(xcb_window_t window, xcb_atom_t property, bool remove = false);
    void SetProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                     const std::vector<std::uint32_t>& items);
    void SetProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& bytes);
    void SendMessage(xcb_window_t to, xcb_window_t window, xcb_atom_t type,
                     const std::array<std::uint32_t, 5>& data, std::uint32_t mask = 0);

    /// The window of the window manager's that `window` lies in: what it calls a client; the one just below
    /// the root where there is no manager.
    xcb_window_t TopLevelOf(xcb_window_t window);
    xcb_window_t ParentOf(xcb_window_t window);
    /// Where the origin of `window` lies on the screen. Nothing if it is gone.
    std::optional<std::array<int, 2>> OriginOf(xcb_window_t window);

    /// The time of the last input event, which takes of focus and selections name.
    xcb_timestamp_t LastInputTime() const { return lastInputTime; }
    void NoteTime(xcb_timestamp_t time) { lastInputTime = time; }

private:
    X11Connection(xcb_connection_t* opened, int screenNumber);
    bool ChooseVisual();
    void InternAtoms();
    void QueryExtensions();
    bool IsLocal() const;

    xcb_connection_t* connection;
    xcb_screen_t* screen = nullptr;
    Visual visual;
    xcb_colormap_t colormap = 0;
    Extensions extensions;
    std::array<xcb_atom_t, x11AtomNames.size()> atoms{};
    std::deque<X11Event> waiting;
    xcb_timestamp_t lastInputTime = XCB_CURRENT_TIME;
};

}  // namespace gui
