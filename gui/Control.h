#pragma once

#include "foundation/NotifyEvent.h"
#include "gui/Canvas.h"
#include "gui/Component.h"
#include "gui/InputFlags.h"
#include "gui/MemberProperty.h"

#include <string>
#include <vector>

namespace gui {

class RootControl;

/// A rectangle on the screen with its children above it: it paints itself and takes mouse, wheel and keys.
/// Children belong to whoever made them; a dying parent leaves them without one. Points are logical units of
/// the control's own. Thread: main or render, with the root's lock held.
class Control : public Component {
public:
    /// Bits of `Anchors`: which edges follow those of the parent. Without either of a pair the control stays
    /// in the middle.
    struct Anchor {
        static constexpr int left = 1, top = 2, right = 4, bottom = 8;
    };
    /// What a parent and the listeners are told.
    enum class Change {
        ChildAdded = 0,
        ChildRemoved = 1,
        Reparented = 2,  // to listeners
        Visibility = 3,
        Bounds = 4,
        Opacity = 5,
        OpaqueRect = 6,
    };
    enum class CaptureMode { None = 0, Button = 1, Wheel = 2, OtherWheel = 3 };
    enum class ScrollPhase { Begin = 0, Change = 1, End = 2 };

    explicit Control(UserInterface& ui, Control* parent = nullptr);
    ~Control() override;

    Rect GetBounds() const { return Bounds.value(); }
    Point GetCenter() const { return GetBounds().Middle(); }
    void SetCenter(Point center);
    float GetHeight() const { return GetBounds().Height(); }
    void SetHeight(float height) { SetSize({GetWidth(), height}); }
    float GetLeft() const { return GetBounds().left; }
    void SetLeft(float left) { SetPosition({left, GetTop()}); }
    Point GetPosition() const { return GetBounds().Origin(); }
    void SetPosition(Point position);
    Point GetSize() const { return GetBounds().Size(); }
    void SetSize(Point size);
    float GetTop() const { return GetBounds().top; }
    void SetTop(float top) { SetPosition({GetLeft(), top}); }
    float GetWidth() const { return GetBounds().Width(); }
    void SetWidth(float width) { SetSize({width, GetHeight()}); }
    /// None of these does anything when no edge moves by more than `geometryTolerance`.
    void SetBounds(float x, float y, float width, float height);
    void SetBounds(const Rect& bounds);

    Property<int> Anchors{Anchor::left | Anchor::top, this};
    Property<bool> Movable{false, this};
    Property<Color> BackgroundColor{Color{}, this};
    Property<Rect> Bounds{Rect{}, this};  // in the parent's coordinates
    MemberProperty<Point, Control, &Control::GetCenter, &Control::SetCenter> Center{*this};
    Property<bool> Enabled{true, this};
    Property<bool> DoubleClickEnabled{true, this};
    Property<bool> WaitsForDoubleClick{false, this};
    MemberProperty<float, Control, &Control::GetHeight, &Control::SetHeight> Height{*this};
    Property<std::string> HintText{std::string(), this};
    Property<bool> Opaque{false, this};  // it paints every pixel of its client rectangle
    MemberProperty<float, Control, &Control::GetLeft, &Control::SetLeft> Left{*this};
    MemberProperty<Point, Control, &Control::GetPosition, &Control::SetPosition> Position{*this};
    Property<int> Opacity{255, this};       // multiplies down the tree
    Property<int> HitThreshold{240, this};  // alpha, 0..255, above which a pixel catches the mouse
    Property<Control*> Parent{nullptr, this};
    MemberProperty<Point, Control, &Control::GetSize, &Control::SetSize> Size{*this};
    MemberProperty<float, Control, &Control::GetTop, &Control::SetTop> Top{*this};
    Property<int> TouchFlags{0, this};
    Property<bool> Visible{true, this};
    MemberProperty<float, Control, &Control::GetWidth, &Control::SetWidth> Width{*this};

    NotifyEvent OnClick;  // every completed click
    NotifyEvent OnDoubleClick;
    NotifyEvent OnOtherClick;
    NotifyEvent OnMouseDown;
    NotifyEvent OnMouseEnter;
    NotifyEvent OnMouseLeave;
    NotifyEvent OnMouseMove;
    NotifyEvent OnMouseUp;
    NotifyEvent OnSingleClick;  // a click that no double-click followed, with `WaitsForDoubleClick`
    NotifyEvent OnResize;
    NotifyEvent OnRightClick;

    void propertyChanged(AbstractProperty& property) override;
    void LinkedComponentDeleted(Component& component) override;

    // What controls override.
    /// A release of the left button outside of everything.
    virtual void CancelMouse();
    virtual void Clicked() { OnClick.fire(this); }
    virtual void OtherClicked(int button);
    virtual Rect GetClientRect() const { return clientRect; }
    virtual void SingleClicked() { OnSingleClick.fire(this); }
    virtual void CaptureReleased();
    virtual void Paint(Canvas& canvas) { PaintContent(canvas); }
    virtual void RightClicked() { OnRightClick.fire(this); }
    virtual void DoubleClicked() { OnDoubleClick.fire(this); }
    /// 0..255; shaped controls give their pixel's alpha.
    virtual int GetAlphaAt(Point) const { return 255; }
    /// @param character  a code point with `KeyCode::character`
    /// True if the key was taken.
    virtual bool KeyPressed(int keyCode, int character, int flags);
    virtual void MouseDown(int button, Point point, int flags);
    virtual void MouseEntered() { OnMouseEnter.fire(this); }
    /// @param device    0 for the wheel or touchpad
    /// @param velocity  notches per millisecond, each -1..1
    /// @param delta     logical units to scroll by
    /// True if it was taken, which captures the control until the mouse moves on.
    virtual bool ScrollEvent(int device, ScrollPhase phase, Point point, int flags, Point velocity,
                             Point delta, float magnitude);
    virtual void MouseLeft() { OnMouseLeave.fire(this); }
    virtual bool Zoomed(ScrollPhase phase, Point point, int flags, float magnitude);
    virtual void MouseMoved(Point point, int flags);
    virtual void MouseUp(int button, Point point, int flags);
    virtual bool ScrollGesture(ScrollPhase phase, Point point, int flags, Point velocity, Point delta);
    virtual bool WheelStep(Point point, int flags, float velocity, Orientation axis);
    virtual bool WheelDelta(Point point, int flags, float delta, Orientation axis);
    virtual void BackingScaleChanged();
    virtual void ChildChanged(Control& control, Change change);
    /// Paints what lies below the children, in own coordinates. The default fills the background colour.
    virtual void PaintContent(Canvas& canvas);
    virtual void Resized() { OnResize.fire(this); }
    virtual void SetFocusedChild(Control* control);
    virtual void TouchEvent() {}
    virtual void TouchHold() {}
    virtual void InvalidateInParent(const Rect& rect);

    /// Adds `rect` to what is repainted. Nothing happens while the control can't be seen.
    void Invalidate(const Rect& rect);
    void Invalidate() { Invalidate(clientRect); }
    /// Moves the child to a place in the painting order; the place it is at then, or the number of children
    /// if it is none of them or the place is past the end.
    int SetChildIndex(Control& child, int index);
    /// Deletes the children themselves.
    void DeleteChildren();
    /// True if it and all above it are visible and not wholly cut away.
    bool IsShown() const;
    bool IsPointShown(Point point) const;
    /// Gives a running drag to another control, as if it had been pressed at `pressPosition`, a point of the
    /// target's own.
    void HandOverMouse(Control& target, Point pressPosition, Point currentPosition, int flags);

    /// The child that catches the mouse at a point of this control's, or null.
    Control* HitChild(Point point) const;
    /// True if the control is there for the mouse at a point of its own: visible, enabled, within the client
    /// rectangle, and opaque enough.
    bool CatchesMouse(Point point) const;
    Point ToRoot(Point point) const;
    Point FromRoot(Point point) const;
    /// Null outside of a tree.
    RootControl* GetRoot() const;
    virtual RootControl* AsRoot() { return nullptr; }
    const std::vector<Control*>& Children() const { return children; }
    bool IsHovered() const { return hoverChild != nullptr; }
    bool IsInnermostHovered() const { return hoverChild == this; }
    CaptureMode GetCaptureMode() const { return captureMode; }
    Control* FocusedChild() const { return focusedChild; }
    const Rect& OpaqueRect() const { return opaqueRect; }
    const Rect& OpaqueChildrenRect() const { return opaqueChildrenRect; }

    /// `listener` gets this control's changes too, until either dies.
    void AddChangeListener(Control& listener);
    void RemoveChangeListener(Control& listener);
    /// Where the next child goes in the painting order; -1 for the end.
    void SetInsertIndex(int index) { insertIndex = index; }

    // The root feeds these; they find the control that the event is for.
    void DispatchMouseDown(int button, Point point, int flags);
    void DispatchMouseMove(Point point, int flags);
    void DispatchMouseUp(int button, Point point, int flags);
    bool DispatchScroll(int device, ScrollPhase phase, Point point, int flags, Point velocity, Point delta,
                        float magnitude);
    bool DispatchKey(int keyCode, int character);
    /// Null leaves the control and all below it.
    void SetHover(Control* newHover);
    /// Paints this control and all above it within the canvas's clip.
    void PaintTree(Canvas& canvas);

protected:
    enum class ClickState { None = 0, Left = 1, Right = 2 };
    enum class MoveState { None = 0, Armed = 1, Moving = 2 };

    void update() override;
    /// True if a release at the point completes a click.
    bool IsInside(Point point) const { return CatchesMouse(point); }

    Rect clientRect;    // (0, 0, width, height)
    Rect layoutBounds;  // the bounds in force
    std::vector<Control*> children;
    Control* focusedChild = nullptr;
    int insertIndex = -1;
    bool layingOutChildren = false;
    bool beingDestroyed = false;
    CaptureMode captureMode = CaptureMode::None;
    Control* hoverChild = nullptr;  // null: not hovered, this: innermost, else the way down
    int button = 0;                 // of the last event,
    Point position;                 // in own coordinates,
    int flags = 0;
    Point dragAnchor;
    MoveState moveState = MoveState::None;
    std::vector<Control*> listeners;
    Rect opaqueChildrenRect;
    Rect opaqueRect;
    Control* currentParent = nullptr;
    ClickState clickState = ClickState::None;
    Rect dirtyRect;

private:
    bool CanPaint() const { return Visible.value() && Opacity.value() >= 1; }
    bool HoldsWheel() const
    {
        return captureMode == CaptureMode::Wheel || captureMode == CaptureMode::OtherWheel;
    }
    void SetCaptured(CaptureMode mode);
    void ReleaseCapture();
    void LeaveMouse();
    void MoveBy(Point point);
    void NotifyChange(Change change);
    void ApplyBounds();
    void ApplyParent();
    void ApplyVisibility(Change change);
    void LayOutChildren(Point oldSize);
    void LeaveParent();
    void JoinParent(Control& newParent);
    void UpdateOpaqueRect();
    Rect UncoveredRect(const Rect& clip) const;
    void PaintChildren(Canvas& canvas);
};

}  // namespace gui
