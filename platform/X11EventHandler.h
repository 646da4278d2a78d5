#pragma once

#include <xcb/xcb.h>

namespace gui {

/// Gets the events of an interface's connection, one after the other, until somebody takes them.
class X11EventHandler {
public:
    virtual ~X11EventHandler() = default;
    /// True if the event was for this one alone. The root's lock is held.
    virtual bool HandleEvent(const xcb_generic_event_t& event) = 0;
};

}  // namespace gui
