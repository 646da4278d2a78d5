#pragma once

#include "foundation/Lock.h"
#include "gui/Control.h"

#include <atomic>
#include <memory>
#include <thread>

namespace gui {

class Timer;

/// Outlives the root, so that an entry can see whether it still exists.
struct RootLiveness {
    std::atomic<bool> alive{true};
};

/// The top of the tree and the gate to it: the platform feeds it with what happens to the window, in logical
/// units. Its lock is held for everything that touches the tree.
class RootControl : public Control, public LockedObject {
public:
    explicit RootControl(UserInterface& ui);
    ~RootControl() override;

    /// Brackets an entry from the platform. The dispatch within may destroy the root, and the lock is then
    /// left alone.
    class Entry {
    public:
        explicit Entry(RootControl& entered);
        ~Entry();
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        bool IsRootAlive() const { return liveness->alive; }

    private:
        std::shared_ptr<RootLiveness> liveness;
        RootControl& root;
    };

    /// Frees the lock around a nested loop of messages for the length of a block, also when an exception
    /// leaves it. The loop may destroy the root, and the lock is then left alone.
    class Suspension {
    public:
        explicit Suspension(RootControl& suspended);
        ~Suspension();
        Suspension(const Suspension&) = delete;
        Suspension& operator=(const Suspension&) = delete;
        bool IsRootAlive() const { return liveness->alive; }

    private:
        std::shared_ptr<RootLiveness> liveness;
        RootControl& root;
        int depth;
    };

    Property<bool> FullScreen{false, this};
    NotifyEvent OnCaptureChanged;
    NotifyEvent OnFullScreenChanging;
    NotifyEvent OnMonitorChanged;

    /// Frees the lock, whatever its depth, which is the result; 0 if this thread doesn't hold it.
    virtual int SuspendLock();
    /// Sends all input to `control` until it is released with null.
    virtual void SetCapture(Control* control);
    virtual void ResumeLock(int depth);
    virtual void ReleaseLockForShutdown();
    virtual void EnterFullScreen() {}
    virtual void ExitFullScreen() {}

    void lock() override;
    void unlock() override;

    // From the platform, in logical units, with the lock held.
    void WindowMouseDown(int button, Point point, int flags);
    void WindowMouseMove(Point point, int flags);
    void WindowMouseUp(int button, Point point, int flags);
    /// @param velocity   notches per millisecond
    /// @param magnitude  notches
    bool WindowScroll(Point point, int flags, Point velocity, Point delta, float magnitude);
    /// False if nobody took the key: the capture is then released unless the left button is held, and the key
    /// is the host's.
    bool WindowKey(int keyCode, int character, int flags);
    /// A modifier key went down or up: the control under the mouse hears of it as of a move.
    void WindowModifiers(int keyboardFlags);

    Control* CapturedControl() const { return capturedControl; }
    bool IsLeftDown() const { return leftDown; }
    int LastFlags() const { return windowFlags; }
    Point LastPosition() const { return windowPosition; }
    void EndScrollGesture();
    /// Takes `control` and all in it out of what the root remembers, as it leaves the tree.
    void ForgetControl(Control& control);
    /// `control` can't be used any more, but stays: what the mouse does with it or anything in it is
    /// cancelled.
    void TakeMouseFrom(Control& control);
    /// The control that took the last step of the running wheel gesture, and so gets its end.
    void SetGestureTaker(Control& control);
    /// Waits for the end of the double-click time to tell of a single click.
    void SetPendingSingleClick(Control& control);
    /// The scale went from `oldScale` to `newScale`: the window follows.
    void FitToScale(float oldScale, float newScale);
    /// The interface is about to end.
    void ReleaseTimers();
    /// Outlives the root.
    std::shared_ptr<const RootLiveness> Liveness() const { return liveness; }

    /// What is to be repainted, logical units; empty for nothing.
    const Rect& DirtyRect() const { return windowDirtyRect; }
    /// Paints the dirty rectangle and empties it. False if there was nothing to paint.
    bool PaintDirty(Canvas& canvas);

    void propertyChanged(AbstractProperty& property) override;
    void InvalidateInParent(const Rect& rect) override;
    void PaintContent(Canvas& canvas) override;
    RootControl* AsRoot() override { return this; }

private:
    Control& EventTarget() { return capturedControl ? *capturedControl : *this; }
    void MoveMouse(Point point, int inputFlags);
    bool BeginScrollGesture(Point point, int inputFlags);
    void FirePendingSingleClick();
    void ClearPendingSingleClick();
    void SwitchFullScreen();

    std::shared_ptr<RootLiveness> liveness = std::make_shared<RootLiveness>();
    std::atomic<std::thread::id> lockOwner{};
    int lockDepth = 0;  // of the owner
    bool changingFullScreen = false;
    bool mappedRightClick = false;
    bool leftDown = false;
    Control* capturedControl = nullptr;
    Control* gestureTarget = nullptr;
    Control* gestureTaker = nullptr;  // the target, or what was found below it
    Point gesturePosition;            // of the target's own
    std::unique_ptr<Timer> gestureTimer;
    Control* pendingSingleClick = nullptr;
    std::unique_ptr<Timer> doubleClickTimer;
    Point lastPressPosition;
    Point windowPosition;  // of the last event
    int windowFlags = 0;
    Rect windowDirtyRect;
};

}  // namespace gui
