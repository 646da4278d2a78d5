#pragma once

#include "platform/X11EventHandler.h"

#include <xcb/xcb.h>

#include <cstdint>

namespace gui {

class X11Interface;

/// Who has the keyboard. The editor asks for it at a click; what it doesn't want of the keys goes to the
/// host, and the keyboard with it, so that the host's next key takes its usual way.
///
/// A key that was ours by then is sent on to the host's top-level window as another program's events are.
/// Toolkits take such keys; the few programs that refuse them get the next one.
class X11Focus : public X11EventHandler {
public:
    explicit X11Focus(X11Interface& ui);

    void Attach(xcb_window_t newWindow);
    void Take();
    /// To whoever had it before.
    void GiveBack();
    /// Sends a key of ours to the host.
    void HandOver(const xcb_key_press_event_t& key);

    bool HandleEvent(const xcb_generic_event_t& event) override;

private:
    void SetHeld(bool now);
    void Request(xcb_window_t to);
    xcb_window_t HostWindow() const;

    X11Interface& interface;
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_window_t previous = XCB_WINDOW_NONE;
    std::uint16_t lastRequest = 0;  // sequence of our last wish; what is older says nothing any more
    bool awaitsAnswer = false;
    bool held = false;
};

}  // namespace gui
