#include "gui/Knob.h"

#include "gui/KnobStyle.h"
#include "gui/UserInterface.h"

#include <cmath>
#include <numbers>

#include "gui/BitmapMixing.h"

namespace gui {

namespace {

constexpr float fullTurn = 360.0f;      // degrees
constexpr float smallestTurn = 0.001f;  // turns that can be seen
constexpr float noAngle = -10.0f;
constexpr int manySteps = 100;        // from here on values feel continuous
constexpr float farthestJump = 0.5f;  // of the range, in one move of a rotation
constexpr float farthestJumpPastAxis = 0.1f;

float Fraction(float x) { return x - std::floor(x); }

/// How far apart two angles are, degrees 0..180.
float DegreesBetween(float a, float b)
{
    const float turns = Fraction(a - b);
    return std::min(turns, 1.0f - turns) * fullTurn;
}

}  // namespace

Knob::Knob(UserInterface& ui, Control* parent, Animator* controlAnimator, const Style& knobStyle)
    : RolloverValueControl(ui, parent, controlAnimator), style(knobStyle), tracker(ui), rotated(ui.Backing())
{
    if (const Bitmap* picture = style.MainPicture())
        SetSize(picture->GetLogicalSize());
}

float Knob::AngleOfValue(int value) const
{
    const float half = Rotation.value() / (2.0f * fullTurn);
    const float start = Fraction(1.0f - half + RotationOffset.value() / fullTurn);
    return Fraction(Rotation.value() / fullTurn * ToShown(value) + start);
}

float Knob::AngleOfPoint(Point point) const
{
    const Point from = point - clientRect.Middle();
    if (from == Point{})
        return 0.0f;
    return Fraction(std::atan2(from.y, from.x) / (2.0f * std::numbers::pi_v<float>)+0.25f);
}

int Knob::ValueOfAngle(float angle) const
{
    const float u = Fraction(angle - RotationOffset.value() / fullTurn - 0.5f);
    const float range = Rotation.value() / fullTurn;
    return FromShown((u - (1.0f - range) * 0.5f) / range);
}

float Knob::ShownAngle() const
{
    const bool showsDefault = ShowDefaultWhenDisabled.value() && !Enabled.value();
    return AngleOfValue(showsDefault ? DefaultValue.value() : Value.value());
}

bool Knob::IsInBand(Point point) const
{
    const Point from = point - clientRect.Middle();
    const float distance = std::hypot(from.x, from.y);
    return distance >= style.InnerRadius.value() && distance <= style.OuterEdge();
}

int Knob::GetAlphaAt(Point point) const
{
    if (style.IsRing()) {
        const float reach = Rotation.value() * 0.5f + style.HandleTolerance.value();
        const float offset = RotationOffset.value() / fullTurn;
        return IsInBand(point) && DegreesBetween(AngleOfPoint(point), offset) <= reach ? 255 : 0;
    }
    const Point size = style.backNormal->GetLogicalSize();
    if (RoundHitArea.value()) {
        const Point from = point - PictureArea().Middle();
        return std::hypot(from.x, from.y) <= size.x * 0.5f - style.FocusInset.value() ? 255 : 0;
    }
    const Point origin = PictureArea().Middle() - size * 0.5f;
    return style.backNormal->GetPixel(point - origin).a;
}

bool Knob::CanRotate(int inputFlags) const
{
    return style.IsRing() || !(ModifierActions::Get(inputFlags) & ModifierActions::fine);
}

Knob::HoverPart Knob::PartAt(Point point) const
{
    const bool onPointer =
        IsInBand(point) &&
        DegreesBetween(AngleOfPoint(point), AngleOfValue(Value.value())) < style.HandleTolerance.value();
    return onPointer ? HoverPart::Pointer : HoverPart::Body;
}

void Knob::SetHoverPart(HoverPart part)
{
    if (part == hoverPart)
        return;
    hoverPart = part;
    Invalidate();
}

void Knob::MouseEntered()
{
    SetHoverPart(HoverPart::Body);
    RolloverValueControl::MouseEntered();
}

void Knob::MouseLeft()
{
    SetHoverPart(HoverPart::None);
    RolloverValueControl::MouseLeft();
}

float Knob::Along(Point point) const
{
    // Upwards and to the right is more.
    return Orientation.value() == gui::Orientation::Vertical ? -point.y : point.x;
}

void Knob::MouseDown(int pressedButton, Point point, int inputFlags)
{
    if (!TakePress(pressedButton, point, inputFlags))
        return;
    const ComponentGuard guard(*this);
    UpdateGroupMode(inputFlags);
    ResetOnRequest(inputFlags);
    if (guard.IsAlive())
        StartDrag(point, inputFlags);
}

void Knob::StartDrag(Point point, int inputFlags)
{
    if (hoverPart == HoverPart::Pointer && CanRotate(inputFlags)) {
        dragMode = DragMode::Rotation;
        pressPointAngle = AngleOfPoint(point);
        pressKnobAngle = AngleOfValue(Value.value());
        jumpGuard = JumpGuard::None;
    } else if (!style.IsRing()) {
        dragMode = DragMode::Linear;
        lastAlong = Along(point);
        tracker.Restart(point);
    }
    Invalidate();
}

void Knob::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    RolloverValueControl::MouseMoved(point, inputFlags);
    if (!guard.IsAlive())
        return;
    if (dragMode == DragMode::None) {
        if (hoverPart != HoverPart::None)
            SetHoverPart(CanRotate(inputFlags) ? PartAt(point) : HoverPart::Body);
        return;
    }
    UpdateGroupMode(inputFlags);
    if (dragMode == DragMode::Linear)
        Drag(point, inputFlags);
    else
        Rotate(point);
}

void Knob::Drag(Point point, int inputFlags)
{
    const float delta = Along(point) - lastAlong;
    lastAlong = Along(point);
    ChangeValue(GesturePhase::Change, tracker.Track(*this, point, delta, inputFlags));
}

void Knob::Rotate(Point point)
{
    const Point from = point - clientRect.Middle();
    if (std::max(std::abs(from.x), std::abs(from.y)) <= style.InnerRadius.value()) {
        jumpGuard = JumpGuard::AtAxis;
        return;
    }
    float limit = GuardJumps.value() ? farthestJump : 1.0f;
    if (jumpGuard != JumpGuard::None) {
        jumpGuard = JumpGuard::PastAxis;
        limit = farthestJumpPastAxis;
    }
    const int target = ValueOfAngle(AngleOfPoint(point) - pressPointAngle + pressKnobAngle);
    if (static_cast<float>(std::abs(target - Value.value())) > limit * static_cast<float>(Range()))
        return;
    jumpGuard = JumpGuard::None;
    ChangeValue(GesturePhase::Change, target - trackedValue);
}

void Knob::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    // A click on a ring takes its value to there, within the gesture of the press.
    if (releasedButton == MouseButton::left && dragMode == DragMode::None && style.IsRing() &&
        IsInGesture() && clickState == ClickState::Left && clientRect.Contains(point) &&
        GetAlphaAt(point) > 0)
        JumpTo(ValueOfAngle(AngleOfPoint(point)));
    if (!guard.IsAlive() || !TakeRelease(releasedButton, point, inputFlags))
        return;
    dragMode = DragMode::None;
    Invalidate();
}

bool Knob::ScrollGesture(ScrollPhase phase, Point, int inputFlags, Point velocity, Point delta)
{
    // Where the range lies on the lower half, up is less.
    const bool turnsDown =
        tracker.Steps.value() < manySteps && RotationOffset.value() - Rotation.value() * 0.5f > 0.0f;
    const float sign = turnsDown ? -1.0f : 1.0f;
    return TrackWheel(tracker, dragMode != DragMode::None, phase, inputFlags, sign * velocity.y,
                      sign * delta.y);
}

Rect Knob::PictureArea() const
{
    const Rect& insets = Insets.value();
    return {clientRect.left + insets.left, clientRect.top + insets.top, clientRect.right - insets.right,
            clientRect.bottom - insets.bottom};
}

const Bitmap* Knob::PointerPicture() const
{
    const Bitmap* const lit = style.overlayActive ? style.overlayActive : style.overlayNormal;
    if (dragMode == DragMode::Rotation)
        return style.overlayDown ? style.overlayDown : lit;
    if (hoverPart == HoverPart::Pointer && dragMode == DragMode::None)
        return style.overlayRotate ? style.overlayRotate : lit;
    return hoverPart != HoverPart::None || Highlighted.value() ? lit : style.overlayNormal;
}

void Knob::UpdatePointer()
{
    const Bitmap* const picture = PointerPicture();
    const float angle = ShownAngle();
    const float moved = std::abs(angle - cachedAngle);
    const bool isTurned = cachedAngle < 0.0f || (moved >= smallestTurn && moved <= 1.0f - smallestTurn);
    if (picture == rotatedPicture && !isTurned)
        return;
    rotatedPicture = picture;
    cachedAngle = angle;
    if (picture)
        RotateBitmap(rotated, *picture, angle);
}

void Knob::PaintContent(Canvas& canvas)
{
    RolloverValueControl::PaintContent(canvas);
    UpdatePointer();
    const Point middle = PictureArea().Middle();
    const auto draw = [&](const Bitmap* picture, int alpha) {
        if (picture)
            canvas.DrawBitmapAt(*picture, middle - picture->GetLogicalSize() * 0.5f, alpha);
    };
    if (!style.IsRing())
        draw(rollover.Picture(style.backNormal, style.backActive), BackgroundOpacity.value());
    draw(rotatedPicture ? &rotated : nullptr, ShownAlpha());
}

void Knob::BackingScaleChanged()
{
    cachedAngle = noAngle;
    RolloverValueControl::BackingScaleChanged();
}

void Knob::propertyChanged(AbstractProperty& property)
{
    if (&property == &Accelerated)
        tracker.Accelerated.assign(Accelerated.value());
    else if (&property == &FineFactor)
        tracker.FineFactor.assign(FineFactor.value());
    else if (&property == &Rotation || &property == &RotationOffset ||
             &property == &ShowDefaultWhenDisabled || &property == &Insets || &property == &Highlighted)
        Invalidate();
    RolloverValueControl::propertyChanged(property);
}

void Knob::ValuePropertyChanged(AbstractProperty& property)
{
    RolloverValueControl::ValuePropertyChanged(property);
    tracker.Steps.assign(Range());
}

}  // namespace gui
