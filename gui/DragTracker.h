#pragma once

#include "foundation/IntervalTimer.h"
#include "foundation/Property.h"
#include "gui/Geometry.h"

#include <memory>

namespace gui {

class Control;
class UserInterface;

/// Turns movements of the mouse and of the wheel into whole steps of a value; what is left over counts for
/// the next. Thread: main, with the root's lock held.
class DragTracker {
public:
    explicit DragTracker(UserInterface& ui);

    Property<bool> Accelerated{true};  // a slow drag is a fine one
    Property<float> FineFactor{0.1f};
    Property<bool> Stepped{false};       // steps snap: one is made at 0.6 of it, and taken back as late
    Property<float> PixelRange{200.0f};  // logical units of a drag over the whole range
    Property<int> Steps{4096};           // of the whole range
    Property<float> WheelScale{1.0f};

    /// Begins a drag with a press, or a wheel gesture without.
    void Restart() { Restart(nowhere); }
    void Restart(Point press);
    /// @param control  0 comes out while a double-click on it is still possible
    /// @param point    where the mouse is now, in the coordinates of the press
    /// @param delta    logical units since the last call
    int Track(const Control& control, Point point, float delta, int flags);
    /// @param velocity  notches per millisecond
    /// @param delta     logical units to scroll by
    int WheelSteps(float velocity, float delta, int flags);
    /// 0 for a slow drag to 1 for a fast one, as of the last `Track`.
    float Speed() const { return speed; }

private:
    static constexpr Point nowhere{-1.0f, -1.0f};

    bool IsStillPress(const Control& control, Point point);

    UserInterface& userInterface;
    std::unique_ptr<IntervalTimer> timer;  // since the last movement
    Point pressPosition = nowhere;
    float remainder = 0.0f;  // steps
    float speed = 0.0f;
    int wheelDirection = 0;
    float wheelRemainder = 0.0f;  // steps
};

}  // namespace gui
