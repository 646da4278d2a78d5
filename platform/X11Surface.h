#pragma once

#include "gui/ICanvas.h"
#include "platform/X11Connection.h"

#include <cstddef>

namespace gui {

/// Brings pictures into a window: through memory that is shared with the display, or through the connection
/// where there is none. Thread: main.
class X11Surface {
public:
    X11Surface(X11Connection& display, xcb_window_t target);
    ~X11Surface();
    X11Surface(const X11Surface&) = delete;
    X11Surface& operator=(const X11Surface&) = delete;

    /// Shows a part of the picture, device pixels, at the same place of the window.
    void Put(const IBitmap& bitmap, const DeviceRect& part);

private:
    bool Reserve(std::size_t bytes);
    void Release();
    void PutShared(const std::uint32_t* pixels, int stride, const DeviceRect& part);
    void PutThrough(const std::uint32_t* pixels, int stride, const DeviceRect& part);
    void CopyRows(const std::uint32_t* pixels, int stride, const DeviceRect& part, std::uint32_t* to) const;

    X11Connection& connection;
    xcb_window_t window;
    xcb_gcontext_t context;
    std::uint32_t segment = 0;
    std::uint32_t* memory = nullptr;
    std::size_t memoryBytes = 0;
    bool sharing;
    bool inFlight = false;  // the display may still read the memory
};

}  // namespace gui
