#pragma once

#include "gui/Geometry.h"

namespace gui {

/// Where menus open, in device pixels of the screen.
class MenuPlacement {
public:
    enum class Side { Below, Beside };

    /// Below or to the right of the anchor, on the other side where there is more room, and within the
    /// monitor in any case; cut to its height.
    static DeviceRect Place(BasicPoint<int> size, const DeviceRect& anchor, Side side,
                            const DeviceRect& monitor);
    /// True if a move from `from` to `to` heads for the near edge of the submenu: it then passes over other
    /// entries on the way.
    static bool HeadsFor(const DeviceRect& submenu, BasicPoint<int> from, BasicPoint<int> to);
};

}  // namespace gui
