#pragma once

#include "gui/Geometry.h"

#include <cstdint>
#include <optional>

namespace gui {

/// Turns steps of wheels and touchpads into what the tree scrolls by.
class WheelMotion {
public:
    struct Scroll {
        Point velocity;  // notches per millisecond
        Point delta;     // logical units
        float magnitude = 0.0f;
        int flags = 0;
    };

    /// @param notches  up and right are positive; a touchpad gives fractions
    /// @param timeMs   of any clock; the first step of an axis counts as one after a long pause
    Scroll Step(Orientation axis, float notches, int flags, std::uint32_t timeMs);

private:
    std::optional<std::uint32_t> lastTimeMs[2];
};

}  // namespace gui
