#pragma once

#include "gui/Geometry.h"
#include "platform/SmoothScroll.h"
#include "platform/WheelMotion.h"
#include "platform/X11Connection.h"
#include "platform/X11EventHandler.h"

#include <cstdint>
#include <optional>

namespace gui {

class X11Interface;

/// Buttons, wheels and motions of the pointer over the interface's window.
class X11Mouse : public X11EventHandler {
public:
    explicit X11Mouse(X11Interface& ui);

    void Attach(xcb_window_t newWindow);
    bool IsInside() const { return inside; }
    /// A press that will see no release: someone else has the mouse now.
    void Cancel();

    bool HandleEvent(const xcb_generic_event_t& event) override;

    /// The flags of a display's state of modifiers and buttons.
    static int FlagsOf(std::uint32_t state) noexcept;

private:
    struct Pointer {
        Point point;  // logical units of the window
        BasicPoint<int> device;
        std::uint32_t state = 0;
        xcb_timestamp_t time = 0;
    };

    bool HandleExtended(const xcb_generic_event_t& event);
    bool HandleCore(const xcb_generic_event_t& event);
    bool HandleCrossing(const xcb_enter_notify_event_t& crossing, bool enters);
    void Pressed(int detail, const Pointer& pointer);
    void Released(int detail, const Pointer& pointer);
    void Moved(const Pointer& pointer);
    void Scroll(Orientation axis, float notches, const Pointer& pointer);
    int PressFlags(int button, const Pointer& pointer);
    bool IsDoubleClick(int button, const Pointer& pointer);
    Point ToLogical(float x, float y) const;
    void ReadAxes();

    X11Interface& interface;
    xcb_window_t window = XCB_WINDOW_NONE;
    SmoothScroll axes;
    WheelMotion wheel;
    bool inside = false;
    int heldButtons = 0;  // one bit each of those pressed over the window
    struct Press {
        int button;
        BasicPoint<int> place;
        xcb_timestamp_t time;
    };
    std::optional<Press> lastPress;  // that a second one may double
    BasicPoint<int> lastPlace{-1, -1};
};

}  // namespace gui
