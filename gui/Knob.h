#pragma once

#include "gui/Bitmap.h"
#include "gui/DragTracker.h"
#include "gui/RolloverValueControl.h"

namespace gui {

/// A control that turns. Its body is dragged along a line, its pointer around its axis. Angles are in turns,
/// 0..1, 0 pointing up and growing clockwise.
class Knob : public RolloverValueControl {
public:
    class Style;

    /// Takes its size from the style.
    /// @param knobStyle  outlives the knob
    Knob(UserInterface& ui, Control* parent, Animator* controlAnimator, const Style& knobStyle);

    Property<bool> Accelerated{true, this};
    Property<gui::Orientation> Orientation{gui::Orientation::Vertical, this};  // of a drag on the body
    Property<bool> RoundHitArea{false, this};
    Property<bool> GuardJumps{true, this};  // turning past the axis can't make the value leap
    LimitedProperty<float> Rotation{300.0f, 1.0f, 360.0f, this};         // degrees over the whole range
    LimitedProperty<float> RotationOffset{0.0f, -359.0f, 359.0f, this};  // degrees, of the range's middle
    Property<bool> ShowDefaultWhenDisabled{false, this};
    Property<float> FineFactor{0.1f, this};
    Property<Rect> Insets{Rect{}, this};  // from the edges to where the pictures are centred

    float AngleOfValue(int value) const;
    /// The angle of a point around the middle; 0 at the middle itself.
    float AngleOfPoint(Point point) const;
    /// The value whose angle is nearest.
    int ValueOfAngle(float angle) const;

    int GetAlphaAt(Point point) const override;
    void MouseEntered() override;
    void MouseLeft() override;
    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    bool ScrollGesture(ScrollPhase phase, Point point, int inputFlags, Point velocity, Point delta) override;
    void PaintContent(Canvas& canvas) override;
    void BackingScaleChanged() override;
    void propertyChanged(AbstractProperty& property) override;
    void ValuePropertyChanged(AbstractProperty& property) override;

private:
    enum class DragMode { None = 0, Linear = 1, Rotation = 2 };
    enum class HoverPart { None = 0, Body = 1, Pointer = 2 };
    enum class JumpGuard { None = 0, AtAxis = 1, PastAxis = 2 };

    bool CanRotate(int inputFlags) const;
    void SetHoverPart(HoverPart part);
    HoverPart PartAt(Point point) const;
    bool IsInBand(Point point) const;
    float ShownAngle() const;
    void StartDrag(Point point, int inputFlags);
    void Drag(Point point, int inputFlags);
    void Rotate(Point point);
    float Along(Point point) const;
    Rect PictureArea() const;
    const Bitmap* PointerPicture() const;
    void UpdatePointer();

    const Style& style;
    DragTracker tracker;
    DragMode dragMode = DragMode::None;
    HoverPart hoverPart = HoverPart::None;
    JumpGuard jumpGuard = JumpGuard::None;
    float lastAlong = 0.0f;        // coordinate of a linear drag
    float pressPointAngle = 0.0f;  // where a rotation began,
    float pressKnobAngle = 0.0f;   // and what the knob showed then
    Bitmap rotated;                // the pointer
    const Bitmap* rotatedPicture = nullptr;
    float cachedAngle = -10.0f;  // of `rotated`; below 0 for none
};

}  // namespace gui
