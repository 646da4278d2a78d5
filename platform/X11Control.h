#pragma once

#include "gui/RootControl.h"
#include "platform/X11EventHandler.h"
#include "platform/X11Interface.h"

namespace gui {

/// The root and its window. What paints it is for the subclasses.
class X11Control : public RootControl, public X11EventHandler {
public:
    explicit X11Control(X11Interface& ui);
    ~X11Control() override;

    /// Makes and shows the window. False if the display refuses.
    bool Create(const X11Interface::Options& options);
    /// The window or the display is gone.
    void ForgetWindow();
    /// Brings what was invalidated to the screen.
    virtual void PaintNow() = 0;

    xcb_window_t Window() const { return window; }
    /// The host's window that it was given; none for a window of its own.
    xcb_window_t HostWindow() const { return parent; }
    /// The host's top-level window, or our own.
    xcb_window_t TopLevel() const { return topLevel; }
    /// True if the host has no part in the window: a dialog, or full screen.
    bool IsOwnTopLevel() const { return !parent || FullScreen.value(); }
    DeviceRect ScreenRect() const;
    BasicPoint<int> DeviceSize() const { return deviceSize; }
    void SetParentWindow(xcb_window_t newParent);
    void Map(bool visible);

    bool HandleEvent(const xcb_generic_event_t& event) override;
    void Resized() override;
    void EnterFullScreen() override;
    void ExitFullScreen() override;

protected:
    /// The window is another one, or none.
    virtual void WindowChanged() = 0;
    /// A part of the window, device pixels, lost its content.
    virtual void Exposed(const DeviceRect& part) = 0;

    X11Interface& interface;

private:
    DeviceRect PlaceOver(const DeviceRect& over, BasicPoint<int> size) const;
    bool CreateNative(xcb_window_t in, const DeviceRect& rect, bool overrideRedirect);
    void DestroyNative();
    void DescribeDialog(const X11Interface::Options& options);
    void FollowHost();
    void FollowSize(const xcb_configure_notify_event_t& event);
    bool CanManageFullScreen();
    bool IsOurs(xcb_window_t of) const { return window && of == window; }
    BasicPoint<int> WantedSize() const;

    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_window_t parent = XCB_WINDOW_NONE;
    xcb_window_t topLevel = XCB_WINDOW_NONE;
    BasicPoint<int> deviceSize;
    std::uint16_t lastConfigure = 0;  // sequence of our last wish for a size,
    bool awaitsConfigure = false;     // until the display has answered it
    Point windowedSize;               // while in full screen
};

}  // namespace gui
