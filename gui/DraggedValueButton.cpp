#include "gui/DraggedValueButton.h"

namespace gui {

DraggedValueButton::DraggedValueButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                                       const Style* initialStyle)
    : Button(ui, parent, controlAnimator, initialStyle), tracker(ui)
{}

float DraggedValueButton::Along(Point point) const
{
    const Point absolute = ToRoot(point);
    return Orientation.value() == gui::Orientation::Vertical ? -absolute.y : absolute.x;
}

void DraggedValueButton::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    Button::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || pressedButton != MouseButton::left || !IsPressed())
        return;
    UpdateGroupMode(inputFlags);
    ResetOnRequest(inputFlags);
    if (!guard.IsAlive())
        return;
    dragging = true;
    madeStep = false;
    pressPosition = point;
    lastAlong = Along(point);
    tracker.Restart(point);
}

void DraggedValueButton::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    Button::MouseMoved(point, inputFlags);
    if (!guard.IsAlive() || !dragging || HandsDragOver(point, inputFlags) || !guard.IsAlive())
        return;
    UpdateGroupMode(inputFlags);
    const float delta = Along(point) - lastAlong;
    lastAlong = Along(point);
    const int steps = tracker.Track(*this, point, delta, inputFlags);
    madeStep = madeStep || steps != 0;
    ChangeValue(GesturePhase::Change, steps);
}

void DraggedValueButton::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    if (releasedButton == MouseButton::left)
        dragging = false;
    Button::MouseUp(releasedButton, point, inputFlags);
    if (guard.IsAlive() && releasedButton == MouseButton::left)
        UpdateGroupMode(0);
}

bool DraggedValueButton::ScrollGesture(ScrollPhase phase, Point, int inputFlags, Point velocity, Point delta)
{
    return TrackWheel(tracker, dragging || IsPressed(), phase, inputFlags, velocity.y, delta.y);
}

void DraggedValueButton::ValuePropertyChanged(AbstractProperty& property)
{
    Button::ValuePropertyChanged(property);
    tracker.Steps.assign(Range());
    UpdateText();
}

}  // namespace gui
