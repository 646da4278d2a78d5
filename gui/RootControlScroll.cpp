#include "foundation/Tolerance.h"
#include "gui/RootControl.h"
#include "gui/Timer.h"
#include "gui/UserInterface.h"

#include <algorithm>
#include <utility>

namespace gui {

namespace {

/// Without a turn of the wheel for this long, the next one is another gesture.
constexpr int gesturePauseMs = 500;
/// The one device there is: wheel or touchpad.
constexpr int wheelDevice = 0;

}  // namespace

bool RootControl::WindowScroll(Point point, int inputFlags, Point velocity, Point delta, float magnitude)
{
    if (isNear(delta.x, 0.0f) && isNear(delta.y, 0.0f))
        return false;
    const auto life = liveness;
    windowPosition = point;
    windowFlags = inputFlags;
    if (gestureTarget && gestureTimer->Running.value())
        gestureTimer->Running.assign(false);
    else if (!BeginScrollGesture(point, inputFlags))
        return false;

    const Point clamped{std::clamp(velocity.x, -1.0f, 1.0f), std::clamp(velocity.y, -1.0f, 1.0f)};
    const bool handled = gestureTarget->DispatchScroll(wheelDevice, ScrollPhase::Change, gesturePosition,
                                                       inputFlags, clamped, delta, magnitude);
    if (handled && life->alive && gestureTarget)
        gestureTimer->Running.assign(true);
    return handled;
}

/// Finds the target of a gesture. False if there is none, as the root is gone.
bool RootControl::BeginScrollGesture(Point point, int inputFlags)
{
    const auto life = liveness;
    const auto begin = [&] {
        Control& target = EventTarget();
        return target.DispatchScroll(wheelDevice, ScrollPhase::Begin, target.FromRoot(point), inputFlags, {},
                                     {}, 0.0f);
    };
    EndScrollGesture();
    if (!life->alive)
        return false;
    if (!gestureTimer) {
        gestureTimer = userInterface.CreateTimer();
        gestureTimer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) { EndScrollGesture(); }));
    }
    gestureTimer->Interval.assign(gesturePauseMs);

    const bool handled = begin();
    if (!life->alive)
        return false;
    if (!handled && capturedControl && capturedControl->GetCaptureMode() == CaptureMode::OtherWheel) {
        SetCapture(nullptr);
        if (life->alive)
            begin();
        if (!life->alive)
            return false;
    }
    gestureTarget = &EventTarget();
    gesturePosition = gestureTarget->FromRoot(point);
    return true;
}

void RootControl::EndScrollGesture()
{
    if (gestureTimer)
        gestureTimer->Running.assign(false);
    gestureTarget = nullptr;
    // Not to whom the hit test would find now: the tree may have changed under the mouse, and whoever got the
    // beginning has to get the end.
    if (Control* taker = std::exchange(gestureTaker, nullptr))
        taker->ScrollEvent(wheelDevice, ScrollPhase::End, {}, windowFlags, {}, {}, 0.0f);
}

void RootControl::SetGestureTaker(Control& control)
{
    Control* const before = std::exchange(gestureTaker, &control);
    if (before && before != &control)
        before->ScrollEvent(wheelDevice, ScrollPhase::End, {}, windowFlags, {}, {}, 0.0f);
}

}  // namespace gui
