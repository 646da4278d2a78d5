#pragma once

#include "gui/Geometry.h"
#include "platform/X11Connection.h"
#include "platform/X11DesktopSettings.h"
#include "platform/X11EventHandler.h"

#include <vector>

namespace gui {

/// The monitors and how large things are on them. Thread: main.
class X11Screens : public X11EventHandler {
public:
    struct Monitor {
        DeviceRect rect;      // of the screen
        int millimetres = 0;  // its width; 0 if it doesn't say, or nonsense
        float scale = 1.0f;   // as measured, not yet one of the levels

        friend bool operator==(const Monitor&, const Monitor&) = default;
    };

    explicit X11Screens(X11Connection& display);

    const X11DesktopSettings& Settings() const { return settings; }
    /// The monitor that most of the rectangle lies on, else the nearest. Null if none is known.
    const Monitor* MonitorOf(const DeviceRect& rect) const;
    /// The scale that fits every monitor: the smallest, from 3 down; 1 if none is known.
    float SmallestScale() const;
    /// Monitors came, went or changed since this was last asked.
    bool TakeChange();

    /// Letters that the user set a size for say the scale, on every monitor. Else a monitor's own size is
    /// only a hint, and often wrong: it counts where it says clearly that the pixels are tiny, and then
    /// doubles.
    static float ScaleOf(const X11DesktopSettings& settings, int widthPixels, int heightPixels,
                         int widthMillimetres);

    bool HandleEvent(const xcb_generic_event_t& event) override;

private:
    void Refresh();
    bool IsNews(const xcb_generic_event_t& event) const;

    X11Connection& connection;
    X11DesktopSettings settings;
    std::vector<Monitor> monitors;
    bool changed = false;
};

}  // namespace gui
