#include "foundation/Tolerance.h"
#include "gui/Control.h"
#include "gui/RootControl.h"
#include "gui/UserInterface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace gui {

namespace {

/// Further than this the mouse has left a place, along either axis.
constexpr float strayDistance = 4.0f;
/// A point that no control contains.
constexpr Point outsidePoint{-32.0f, 0.0f};

bool HasStrayed(Point from, Point to)
{
    return std::abs(to.x - from.x) > strayDistance || std::abs(to.y - from.y) > strayDistance;
}

}  // namespace

// Finding the control

bool Control::CatchesMouse(Point point) const
{
    return Visible.value() && Enabled.value() && GetClientRect().Contains(point) &&
           GetAlphaAt(point) * Opacity.value() > HitThreshold.value() * 255;
}

Control* Control::HitChild(Point point) const
{
    for (std::size_t i = children.size(); i-- > 0;) {
        Control& child = *children[i];
        if (!child.beingDestroyed && child.CatchesMouse(point - child.layoutBounds.Origin()))
            return &child;
    }
    return nullptr;
}

void Control::SetCaptured(CaptureMode mode)
{
    RootControl* const root = GetRoot();
    if (!root)
        return;
    const ComponentGuard self(*this);
    captureMode = mode;
    root->SetCapture(this);
    if (self.IsAlive() && GetRoot() == root && root->CapturedControl() != this)
        captureMode = CaptureMode::None;  // a handler gave it to another
}

void Control::ReleaseCapture()
{
    RootControl* root = GetRoot();
    if (root && root->CapturedControl() == this)
        root->SetCapture(nullptr);
    else
        CaptureReleased();
}

/// Nothing in this control is there for the mouse any more: a press, a wheel gesture and the hover end at
/// once.
void Control::LeaveMouse()
{
    RootControl* const root = GetRoot();
    if (!root)
        return;
    const ComponentGuard self(*this);
    root->TakeMouseFrom(*this);
    if (!self.IsAlive() || !hoverChild)
        return;
    if (currentParent && currentParent->hoverChild == this)
        currentParent->hoverChild = currentParent;
    SetHover(nullptr);
}

void Control::DispatchMouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    if (HoldsWheel())
        ReleaseCapture();
    if (!self.IsAlive())
        return;
    if (Control* child = HitChild(point))
        return child->DispatchMouseDown(pressedButton, point - child->layoutBounds.Origin(), inputFlags);

    if (pressedButton == MouseButton::left) {
        SetFocusedChild(nullptr);
        if (self.IsAlive() && captureMode == CaptureMode::None)
            SetCaptured(CaptureMode::Button);
    }
    if (self.IsAlive())
        userInterface.SetHint({});
    if (self.IsAlive())
        MouseDown(pressedButton, point, inputFlags);
}

void Control::DispatchMouseMove(Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    if (HoldsWheel() && HasStrayed(dragAnchor, ToRoot(point)))
        ReleaseCapture();
    if (!self.IsAlive())
        return;
    if (Control* child = captureMode == CaptureMode::None ? HitChild(point) : nullptr) {
        const ComponentGuard guardedChild(*child);
        SetHover(child);
        if (self.IsAlive() && guardedChild.IsAlive() && child->currentParent == this)
            child->DispatchMouseMove(point - child->layoutBounds.Origin(), inputFlags);
        return;
    }
    SetHover(this);
    if (self.IsAlive())
        MouseMoved(point, inputFlags);
}

void Control::DispatchMouseUp(int releasedButton, Point point, int inputFlags)
{
    if (Control* child = captureMode == CaptureMode::None ? HitChild(point) : nullptr)
        return child->DispatchMouseUp(releasedButton, point - child->layoutBounds.Origin(), inputFlags);
    const ComponentGuard self(*this);
    if (releasedButton == MouseButton::left && captureMode != CaptureMode::None)
        ReleaseCapture();
    if (self.IsAlive())
        MouseUp(releasedButton, point, inputFlags);
}

bool Control::DispatchScroll(int device, ScrollPhase phase, Point point, int inputFlags, Point velocity,
                             Point delta, float magnitude)
{
    const ComponentGuard self(*this);
    if (Control* child = captureMode == CaptureMode::None ? HitChild(point) : nullptr) {
        if (child->DispatchScroll(device, phase, point - child->layoutBounds.Origin(), inputFlags, velocity,
                                  delta, magnitude))
            return true;
        if (!self.IsAlive())
            return false;
    }
    if (!ScrollEvent(device, phase, point, inputFlags, velocity, delta, magnitude))
        return false;
    if (phase == ScrollPhase::End || !self.IsAlive())
        return true;
    if (RootControl* root = device == 0 ? GetRoot() : nullptr)
        root->SetGestureTaker(*this);
    if (!self.IsAlive())
        return true;
    if (IsHovered() && captureMode == CaptureMode::None) {
        dragAnchor = ToRoot(point);
        SetCaptured(device == 0 ? CaptureMode::Wheel : CaptureMode::OtherWheel);
    }
    if (self.IsAlive())
        userInterface.SetHint({});
    return true;
}

bool Control::DispatchKey(int keyCode, int character)
{
    const ComponentGuard self(*this);
    if (focusedChild && focusedChild->DispatchKey(keyCode, character))
        return true;
    return self.IsAlive() && KeyPressed(keyCode, character, 0);
}

void Control::SetHover(Control* newHover)
{
    if (newHover == hoverChild)
        return;
    const ComponentGuard self(*this);
    // A control may get the mouse by way of a capture: those below it are entered too.
    if (newHover && currentParent && currentParent->hoverChild != this)
        currentParent->SetHover(this);
    if (!self.IsAlive())
        return;
    Control* const oldHover = std::exchange(hoverChild, newHover);
    if (oldHover && oldHover != this)
        oldHover->SetHover(nullptr);
    if (!self.IsAlive())
        return;
    if (oldHover && !newHover) {
        userInterface.ClearHint(*this);
        if (self.IsAlive())
            MouseLeft();
    } else if (!oldHover && newHover) {
        MouseEntered();
        if (self.IsAlive() && hoverChild && !HintText.value().empty())
            userInterface.SetHint(HintText.value());
    }
}

void Control::HandOverMouse(Control& target, Point pressPosition, Point currentPosition, int inputFlags)
{
    const ComponentGuard guardedTarget(target);
    CancelMouse();
    if (!guardedTarget.IsAlive() || !target.GetRoot())
        return;
    target.SetCaptured(CaptureMode::Button);
    if (guardedTarget.IsAlive())
        target.SetHover(&target);
    if (guardedTarget.IsAlive())
        target.MouseDown(MouseButton::left, pressPosition, inputFlags & ~InputFlags::doubleClick);
    if (guardedTarget.IsAlive())
        target.DispatchMouseMove(currentPosition, inputFlags);
}

// What a control does with it

void Control::CaptureReleased()
{
    captureMode = CaptureMode::None;
    moveState = MoveState::None;  // without the capture no release ends the drag
}

void Control::CancelMouse()
{
    const ComponentGuard self(*this);
    if (captureMode != CaptureMode::None)
        ReleaseCapture();
    if (self.IsAlive())
        MouseUp(MouseButton::left, outsidePoint, 0);
}

void Control::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    button = pressedButton;
    position = point;
    flags = inputFlags;
    if (pressedButton == MouseButton::left) {
        if (Movable.value()) {
            moveState = MoveState::Armed;
            dragAnchor = point;
        }
        if ((inputFlags & InputFlags::doubleClick) && DoubleClickEnabled.value())
            DoubleClicked();
        else
            clickState = ClickState::Left;
    } else if (pressedButton == MouseButton::right) {
        clickState = ClickState::Right;
    }
    if (self.IsAlive())
        OnMouseDown.fire(this);
}

void Control::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    if (moveState == MoveState::Armed && HasStrayed(dragAnchor, point)) {
        moveState = MoveState::Moving;
        clickState = ClickState::None;
    }
    position = point;
    flags = inputFlags;
    if (moveState == MoveState::Moving)
        MoveBy(point);
    if (self.IsAlive())
        OnMouseMove.fire(this);
}

/// Drags the control so that the place where it was grabbed comes to `point`, but not out of the parent.
void Control::MoveBy(Point point)
{
    if (!currentParent)
        return;
    const Rect area = currentParent->GetClientRect();
    const Point origin = layoutBounds.Origin();
    const Point wanted = origin + point;
    const Point reached{std::max(area.left, std::min(wanted.x, area.right)),
                        std::max(area.top, std::min(wanted.y, area.bottom))};
    SetPosition(reached - dragAnchor);
}

void Control::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard self(*this);
    button = releasedButton;
    position = point;
    flags = inputFlags;
    moveState = MoveState::None;
    OnMouseUp.fire(this);
    if (!self.IsAlive())
        return;
    const ClickState click = std::exchange(clickState, ClickState::None);
    if (click == ClickState::None || !IsInside(point))
        return;
    if (click == ClickState::Right)
        return RightClicked();
    Clicked();
    if (!self.IsAlive() || !WaitsForDoubleClick.value())
        return;
    if (RootControl* root = GetRoot())
        root->SetPendingSingleClick(*this);
}

void Control::OtherClicked(int clickedButton)
{
    if (clickedButton == MouseButton::middle)
        OnOtherClick.fire(this);
}

bool Control::KeyPressed(int, int, int) { return false; }

bool Control::ScrollEvent(int device, ScrollPhase phase, Point point, int inputFlags, Point velocity,
                          Point delta, float magnitude)
{
    if (device != 0)
        return Zoomed(phase, point, inputFlags, magnitude);
    const ComponentGuard self(*this);
    if (ScrollGesture(phase, point, inputFlags, velocity, delta))
        return true;
    return self.IsAlive() && (inputFlags & InputFlags::keyboardMask) == InputFlags::ctrl &&
           Zoomed(phase, point, inputFlags, magnitude);
}

bool Control::Zoomed(ScrollPhase, Point, int, float) { return false; }

bool Control::ScrollGesture(ScrollPhase phase, Point point, int inputFlags, Point velocity, Point delta)
{
    if (phase != ScrollPhase::Change)
        return false;
    const ComponentGuard self(*this);
    using Handler = bool (Control::*)(Point, int, float, Orientation);
    const auto offer = [&](Handler handler, float amount, Orientation axis) {
        return self.IsAlive() && !isNear(amount, 0.0f) && (this->*handler)(point, inputFlags, amount, axis);
    };
    return offer(&Control::WheelStep, velocity.x, Orientation::Horizontal) ||
           offer(&Control::WheelStep, velocity.y, Orientation::Vertical) ||
           offer(&Control::WheelDelta, delta.x, Orientation::Horizontal) ||
           offer(&Control::WheelDelta, delta.y, Orientation::Vertical);
}

bool Control::WheelStep(Point, int, float, Orientation) { return false; }

bool Control::WheelDelta(Point, int, float, Orientation) { return false; }

}  // namespace gui
