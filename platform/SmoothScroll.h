#pragma once

#include "gui/Geometry.h"

#include <map>
#include <optional>
#include <utility>

namespace gui {

/// The scrolling axes of all pointing devices. Each counts on for as long as the device lives, also while
/// other windows get its motions, so that only differences mean anything.
class SmoothScroll {
public:
    struct Axis {
        Orientation orientation = Orientation::Vertical;
        double increment = 1.0;       // of the value, per notch; may be negative
        std::optional<double> value;  // the last one known
    };

    void Clear() { axes.clear(); }
    /// The values known mean nothing any more: the next motion only tells where each axis stands.
    void ForgetValues();
    void SetAxis(int device, int number, const Axis& axis);
    bool HasAxes(int device) const;

    struct Step {
        Orientation orientation;
        float notches;  // up and right are positive
    };
    /// None if the axis doesn't scroll, or hasn't moved since a value was known.
    std::optional<Step> Move(int device, int number, double value);

private:
    std::map<std::pair<int, int>, Axis> axes;  // by device and number
};

}  // namespace gui
