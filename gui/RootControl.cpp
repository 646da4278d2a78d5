#include "gui/RootControl.h"

#include "foundation/Tolerance.h"
#include "gui/Bitmap.h"
#include "gui/Timer.h"
#include "gui/UserInterface.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace gui {

namespace {

constexpr Color emptyBackground = Color::Rgb(0xC0C0C0);

bool IsWithin(const Control* control, const Control& container)
{
    while (control && control != &container)
        control = control->Parent.value();
    return control != nullptr;
}

}  // namespace

RootControl::Entry::Entry(RootControl& entered) : liveness(entered.liveness), root(entered) { root.lock(); }

RootControl::Entry::~Entry()
{
    if (liveness->alive)
        root.unlock();
}

RootControl::Suspension::Suspension(RootControl& suspended)
    : liveness(suspended.liveness), root(suspended), depth(suspended.SuspendLock())
{}

RootControl::Suspension::~Suspension()
{
    if (liveness->alive)
        root.ResumeLock(depth);
}

RootControl::RootControl(UserInterface& ui) : Control(ui) {}

RootControl::~RootControl()
{
    liveness->alive = false;
    ReleaseTimers();
    RootControl::ReleaseLockForShutdown();
}

void RootControl::ReleaseTimers()
{
    gestureTimer.reset();
    doubleClickTimer.reset();
}

// The lock

void RootControl::lock()
{
    const auto self = std::this_thread::get_id();
    if (lockOwner.load() != self) {
        LockedObject::lock();
        lockOwner = self;
    }
    ++lockDepth;
}

void RootControl::unlock()
{
    // Nothing to do where the lock went meanwhile, as for the shutdown.
    if (lockOwner.load() == std::this_thread::get_id() && --lockDepth == 0)
        RootControl::ReleaseLockForShutdown();
}

int RootControl::SuspendLock()
{
    if (lockOwner.load() != std::this_thread::get_id())
        return 0;
    const int heldDepth = lockDepth;
    RootControl::ReleaseLockForShutdown();
    return heldDepth;
}

void RootControl::ResumeLock(int heldDepth)
{
    if (heldDepth <= 0)
        return;
    RootControl::lock();
    lockDepth = heldDepth;
}

void RootControl::ReleaseLockForShutdown()
{
    if (lockOwner.load() != std::this_thread::get_id())
        return;
    lockDepth = 0;
    lockOwner = std::thread::id();
    LockedObject::unlock();
}

// Capture

void RootControl::SetCapture(Control* control)
{
    if (control == capturedControl)
        return;
    const auto life = liveness;
    std::optional<ComponentGuard> taking;
    if (control)
        taking.emplace(*control);
    if (capturedControl)
        EndScrollGesture();
    if (!life->alive)
        return;
    if (Control* released = std::exchange(capturedControl, nullptr))
        released->CaptureReleased();
    // A handler may have given the capture to another, or have deleted the control that is to get it.
    if (!life->alive || capturedControl)
        return;
    capturedControl = taking && taking->IsAlive() ? control : nullptr;
    OnCaptureChanged.fire(this);
}

void RootControl::ForgetControl(Control& control)
{
    const auto life = liveness;
    const ComponentGuard forgotten(control);
    if (IsWithin(pendingSingleClick, control))
        ClearPendingSingleClick();
    if (IsWithin(gestureTarget, control) || IsWithin(gestureTaker, control))
        EndScrollGesture();
    if (life->alive && forgotten.IsAlive() && IsWithin(capturedControl, control))
        SetCapture(nullptr);
}

void RootControl::TakeMouseFrom(Control& control)
{
    const auto life = liveness;
    const ComponentGuard guarded(control);
    if (IsWithin(gestureTarget, control) || IsWithin(gestureTaker, control))
        EndScrollGesture();
    if (!life->alive || !guarded.IsAlive() || !IsWithin(capturedControl, control))
        return;
    if (capturedControl->GetCaptureMode() == CaptureMode::Button)
        capturedControl->CancelMouse();
    else
        SetCapture(nullptr);
}

// The mouse

/// Sends a move to where input goes. A move that ended a capture also goes to what is under the mouse now.
void RootControl::MoveMouse(Point point, int inputFlags)
{
    const auto life = liveness;
    Control& target = EventTarget();
    const bool wasCaptured = &target != this;
    target.DispatchMouseMove(target.FromRoot(point), inputFlags);
    if (life->alive && wasCaptured && !capturedControl)
        DispatchMouseMove(point, inputFlags);
}

void RootControl::WindowMouseDown(int pressedButton, Point point, int inputFlags)
{
    const auto life = liveness;
    if (!userInterface.PassesMouseFilter(pressedButton, point, inputFlags) || !life->alive)
        return;
    if (inputFlags & InputFlags::doubleClick)
        ClearPendingSingleClick();
    else
        FirePendingSingleClick();
    if (!life->alive)
        return;

    mappedRightClick = pressedButton == MouseButton::left &&
                       (inputFlags & InputFlags::keyboardMask) == InputFlags::secondaryClick;
    if (mappedRightClick) {
        pressedButton = MouseButton::right;
        inputFlags &= ~InputFlags::secondaryClick;
    } else if (pressedButton == MouseButton::left) {
        leftDown = true;
    }
    windowPosition = point;
    windowFlags = inputFlags;
    lastPressPosition = point;
    MoveMouse(point, inputFlags | InputFlags::synthetic);
    if (!life->alive)
        return;
    Control& target = EventTarget();
    target.DispatchMouseDown(pressedButton, target.FromRoot(point), inputFlags);
}

void RootControl::WindowMouseMove(Point point, int inputFlags)
{
    const auto life = liveness;
    if (pendingSingleClick) {
        const float scale = userInterface.Backing().Scale();
        const Point way = (point - lastPressPosition) * scale;
        const auto distance = static_cast<float>(userInterface.Platform().GetDoubleClickDistance());
        if (std::abs(way.x) > distance || std::abs(way.y) > distance)
            FirePendingSingleClick();
    }
    if (!life->alive)
        return;
    windowPosition = point;
    windowFlags = inputFlags;
    MoveMouse(point, inputFlags);
}

void RootControl::WindowMouseUp(int releasedButton, Point point, int inputFlags)
{
    const auto life = liveness;
    if (mappedRightClick) {
        releasedButton = MouseButton::right;
        inputFlags &= ~InputFlags::secondaryClick;
        mappedRightClick = false;
    }
    EndScrollGesture();
    if (!life->alive)
        return;
    if (releasedButton == MouseButton::left)
        leftDown = false;
    windowPosition = point;
    windowFlags = inputFlags;
    MoveMouse(point, inputFlags | InputFlags::synthetic);
    if (!life->alive)
        return;
    Control& target = EventTarget();
    target.DispatchMouseUp(releasedButton, target.FromRoot(point), inputFlags);
}

void RootControl::WindowModifiers(int keyboardFlags)
{
    constexpr int watched = InputFlags::ctrl | InputFlags::shift;
    const bool differs = ((keyboardFlags ^ windowFlags) & watched) != 0;
    const int kept = windowFlags & ~(InputFlags::keyboardMask | InputFlags::doubleClick);
    const int inputFlags = kept | (keyboardFlags & InputFlags::keyboardMask);
    if (!differs)
        return;
    // Nobody is under a mouse that is elsewhere.
    if (IsHovered() || capturedControl)
        WindowMouseMove(windowPosition, inputFlags);
    else
        windowFlags = inputFlags;
}

// Single clicks that a second one may follow

void RootControl::SetPendingSingleClick(Control& control)
{
    if (!doubleClickTimer) {
        doubleClickTimer = userInterface.CreateTimer();
        doubleClickTimer->OnElapsed.setHandler(
            NotifyEvent::handler([this](void*) { FirePendingSingleClick(); }));
    }
    pendingSingleClick = &control;
    doubleClickTimer->Interval.assign(userInterface.Platform().GetDoubleClickTime());
    doubleClickTimer->Running.assign(true);
    doubleClickTimer->Restart();
}

void RootControl::ClearPendingSingleClick()
{
    pendingSingleClick = nullptr;
    if (doubleClickTimer)
        doubleClickTimer->Running.assign(false);
}

void RootControl::FirePendingSingleClick()
{
    Control* control = pendingSingleClick;
    ClearPendingSingleClick();
    if (control)
        control->SingleClicked();
}

// Keys

bool RootControl::WindowKey(int keyCode, int character, int)
{
    const auto life = liveness;
    if (DispatchKey(keyCode, character))
        return true;
    if (life->alive && !leftDown)
        SetCapture(nullptr);
    return false;
}

// Painting

void RootControl::InvalidateInParent(const Rect& rect)
{
    const Rect visible = rect.Intersected(GetClientRect());
    windowDirtyRect = windowDirtyRect.United(visible);
}

bool RootControl::PaintDirty(Canvas& canvas)
{
    if (windowDirtyRect.IsEmpty())
        return false;
    // What is invalidated while it paints is for the next time.
    canvas.Restore({std::exchange(windowDirtyRect, {}), 255, {}});
    PaintTree(canvas);
    return true;
}

void RootControl::PaintContent(Canvas& canvas)
{
    Bitmap* background = userInterface.BackgroundBitmap();
    if (background && background->GetSize().x > 0 && background->GetSize().y > 0)
        canvas.DrawBitmapAt(*background, {});
    else
        canvas.FillRect(GetClientRect(), emptyBackground);
}

// Full screen and scale

void RootControl::propertyChanged(AbstractProperty& property)
{
    if (&property == &FullScreen)
        SwitchFullScreen();
    else
        Control::propertyChanged(property);
}

void RootControl::SwitchFullScreen()
{
    const auto life = liveness;
    const bool on = FullScreen.value();
    changingFullScreen = true;
    OnFullScreenChanging.fire(this);
    if (life->alive)
        userInterface.Backing().SetFullScreen(on);
    if (life->alive)
        on ? EnterFullScreen() : ExitFullScreen();
    if (life->alive)
        changingFullScreen = false;
}

void RootControl::FitToScale(float oldScale, float newScale)
{
    if (changingFullScreen)
        return;
    if (FullScreen.value()) {
        const Rect bounds = GetBounds();
        const float ratio = oldScale / newScale;
        SetBounds({bounds.left * ratio, bounds.top * ratio, bounds.right * ratio, bounds.bottom * ratio});
    } else {
        Resized();
    }
}

}  // namespace gui
