#include "gui/ScrollBar.h"

#include "gui/Palette.h"

namespace gui {

namespace {

constexpr Color gutterColor = Palette::ink.WithAlpha(40);
constexpr Color barColor = Palette::ink.WithAlpha(110);
constexpr Color litBarColor = Palette::ink.WithAlpha(160);

}  // namespace

ScrollArea::ScrollBar::ScrollBar(ScrollArea& scrollArea, Control& gutter, gui::Orientation barAxis)
    : Button(scrollArea.userInterface, &gutter, scrollArea.GetAnimator()), area(scrollArea), axis(barAxis)
{}

void ScrollArea::ScrollBar::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    Button::MouseDown(pressedButton, point, inputFlags);
    if (guard.IsAlive() && IsPressed())
        area.BeginBarDrag(axis, point + GetPosition());
}

void ScrollArea::ScrollBar::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    Button::MouseMoved(point, inputFlags);
    if (guard.IsAlive() && IsPressed())
        area.DragBar(axis, point + GetPosition());
}

void ScrollArea::ScrollBar::MouseUp(int releasedButton, Point point, int inputFlags)
{
    if (IsPressed() && releasedButton == MouseButton::left)
        area.EndBarDrag();
    Button::MouseUp(releasedButton, point, inputFlags);
}

void ScrollArea::ScrollBar::PaintContent(Canvas& canvas)
{
    canvas.FillRect(clientRect, State() == VisualState::Normal ? barColor : litBarColor);
}

ScrollArea::ScrollBarGutter::ScrollBarGutter(ScrollArea& scrollArea, gui::Orientation gutterAxis)
    : Control(scrollArea.userInterface, &scrollArea),
      area(scrollArea),
      axis(gutterAxis),
      bar(scrollArea, *this, gutterAxis)
{
    BackgroundColor.assign(gutterColor);
}

void ScrollArea::ScrollBarGutter::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    Control::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || pressedButton != MouseButton::left)
        return;
    area.StopScrolling();
    const bool vertical = axis == gui::Orientation::Vertical;
    const bool before = vertical ? point.y < bar.GetTop() : point.x < bar.GetLeft();
    const Rect shown = area.ViewRect();
    const float page = vertical ? shown.Height() : shown.Width();
    area.ScrollAlong(axis, before ? -page : page);
}

}  // namespace gui
