#include "gui/Switch.h"

#include "gui/Bitmap.h"
#include "gui/SwitchStyle.h"

#include <algorithm>
#include <cmath>

namespace gui {

namespace {

constexpr float clickReach = 4.0f;  // logical units around a press on the track that are no drag yet

}  // namespace

Switch::Switch(UserInterface& ui, Control* parent, Animator* controlAnimator, const Style& switchStyle)
    : RolloverValueControl(ui, parent, controlAnimator), style(switchStyle), tracker(ui)
{
    // The handle goes with the mouse at any speed.
    tracker.Accelerated.assign(false);
    if (style.track)
        SetSize(style.track->GetLogicalSize());
    UpdateTracker();
}

bool Switch::IsVertical() const
{
    return Direction.value() == gui::Direction::Up || Direction.value() == gui::Direction::Down;
}

float Switch::HandleLength() const
{
    if (HandleSize.value() > 0.0f || !style.handle)
        return HandleSize.value();
    const Point size = style.handle->GetLogicalSize();
    return IsVertical() ? size.y : size.x;
}

float Switch::Travel() const
{
    const float length = IsVertical() ? clientRect.Height() : clientRect.Width();
    return std::max(length - HandleLength() - 2.0f * HandleOffset.value(), 0.0f);
}

Rect Switch::HandleRect() const
{
    const bool growsBack =
        Direction.value() == gui::Direction::Up || Direction.value() == gui::Direction::Left;
    const float shown = ToShown(Value.value());
    const float start = HandleOffset.value() + (growsBack ? 1.0f - shown : shown) * Travel();
    const float across = IsVertical() ? clientRect.Width() : clientRect.Height();
    const Point size = style.handle ? style.handle->GetLogicalSize() : Point{across, across};
    if (IsVertical())
        return Rect::At({(across - size.x) * 0.5f, start}, {size.x, HandleLength()});
    return Rect::At({start, (across - size.y) * 0.5f}, {HandleLength(), size.y});
}

float Switch::Along(Point point) const
{
    switch (Direction.value()) {
    case gui::Direction::Left:
        return -point.x;
    case gui::Direction::Right:
        return point.x;
    case gui::Direction::Up:
        return -point.y;
    case gui::Direction::Down:
        break;
    }
    return point.y;
}

int Switch::ValueAt(Point point) const
{
    const float travel = Travel();
    if (!(travel > 0.0f))
        return Value.value();
    const float low = HandleOffset.value() + HandleLength() * 0.5f;
    const float place = IsVertical() ? point.y - low : point.x - low;
    const bool growsBack =
        Direction.value() == gui::Direction::Up || Direction.value() == gui::Direction::Left;
    return FromShown(std::clamp((growsBack ? travel - place : place) / travel, 0.0f, 1.0f));
}

void Switch::StartDrag(Point point)
{
    dragMode = DragMode::Dragging;
    isFirstMove = true;
    tracker.Restart(point);
    Invalidate();
}

void Switch::MouseDown(int pressedButton, Point point, int inputFlags)
{
    if (!TakePress(pressedButton, point, inputFlags))
        return;
    const ComponentGuard guard(*this);
    UpdateGroupMode(inputFlags);
    pressPosition = point;
    const bool wasOnHandle = IsOnHandle(point);
    const bool wasReset = ResetOnRequest(inputFlags);
    if (!guard.IsAlive())
        return;
    // After a reset the release must not jump away from it.
    if (wasOnHandle || wasReset)
        StartDrag(point);
    else
        dragMode = DragMode::TrackPressed;
}

void Switch::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    RolloverValueControl::MouseMoved(point, inputFlags);
    if (!guard.IsAlive() || dragMode == DragMode::None || inputFlags & InputFlags::synthetic)
        return;
    UpdateGroupMode(inputFlags);
    if (dragMode == DragMode::TrackPressed) {
        const Point moved = point - pressPosition;
        if (std::abs(moved.x) <= clickReach && std::abs(moved.y) <= clickReach)
            return;
        StartDrag(point);
    }
    const float delta = isFirstMove ? 0.0f : Along(point) - lastAlong;
    isFirstMove = false;
    lastAlong = Along(point);
    ChangeValue(GesturePhase::Change, tracker.Track(*this, point, delta, inputFlags));
}

void Switch::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    // The jump is part of the gesture of the press.
    if (releasedButton == MouseButton::left && dragMode == DragMode::TrackPressed && IsInGesture() &&
        IsInside(point))
        ChangeValue(GesturePhase::Change, ValueAt(point) - trackedValue);
    if (!guard.IsAlive() || !TakeRelease(releasedButton, point, inputFlags))
        return;
    dragMode = DragMode::None;
    Invalidate();
}

bool Switch::ScrollGesture(ScrollPhase phase, Point, int inputFlags, Point velocity, Point delta)
{
    return TrackWheel(tracker, dragMode != DragMode::None, phase, inputFlags, velocity.y, delta.y);
}

void Switch::PaintTrack(Canvas& canvas)
{
    const auto draw = [&](const Bitmap& picture, int alpha) {
        const Rect source = Rect::At({}, picture.GetLogicalSize());
        if (StretchHalves.value())
            canvas.DrawBitmapStretchedHalves(picture, clientRect, source, alpha,
                                             IsVertical() ? Orientation::Vertical : Orientation::Horizontal);
        else
            canvas.DrawBitmapStretched(picture, clientRect, source, 0.0f, alpha);
    };
    if (const Bitmap* picture = rollover.Picture(style.track, style.trackActive, 0))
        draw(*picture, BackgroundOpacity.value());
    if (!style.fill || !ShowsPosition.value())
        return;
    const Point middle = HandleRect().Middle();
    Rect filled = clientRect;
    switch (Direction.value()) {
    case gui::Direction::Left:
        filled.left = middle.x;
        break;
    case gui::Direction::Right:
        filled.right = middle.x;
        break;
    case gui::Direction::Up:
        filled.top = middle.y;
        break;
    case gui::Direction::Down:
        filled.bottom = middle.y;
        break;
    }
    const Canvas::State saved = canvas.Save();
    canvas.Clip.assign(canvas.Clip.value().Intersected(filled));
    draw(*style.fill, ShownAlpha(BackgroundOpacity.value()));
    canvas.Restore(saved);
}

void Switch::PaintHandle(Canvas& canvas)
{
    if (!ShowsPosition.value() || !style.handle)
        return;
    const Bitmap* const picture = dragMode == DragMode::Dragging && style.handleDown
                                      ? style.handleDown
                                      : rollover.Picture(style.handle, style.handleActive, 1);
    canvas.DrawBitmapAt(*picture, HandleRect().Middle() - picture->GetLogicalSize() * 0.5f, ShownAlpha());
}

void Switch::PaintContent(Canvas& canvas)
{
    RolloverValueControl::PaintContent(canvas);
    PaintTrack(canvas);
    PaintHandle(canvas);
}

void Switch::UpdateTracker()
{
    tracker.Steps.assign(Range());
    tracker.PixelRange.assign(std::max(Travel(), 1.0f));
}

void Switch::Resized()
{
    UpdateTracker();
    RolloverValueControl::Resized();
}

void Switch::propertyChanged(AbstractProperty& property)
{
    if (&property == &HandleSize || &property == &HandleOffset || &property == &Direction ||
        &property == &StretchHalves || &property == &ShowsPosition) {
        UpdateTracker();
        Invalidate();
    }
    RolloverValueControl::propertyChanged(property);
}

void Switch::ValuePropertyChanged(AbstractProperty& property)
{
    RolloverValueControl::ValuePropertyChanged(property);
    UpdateTracker();
}

}  // namespace gui
