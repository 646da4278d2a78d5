#include "gui/ScrollArea.h"

#include "gui/ScrollBar.h"
#include "gui/UserInterface.h"
#include "gui/ValueAnimation.h"

#include <algorithm>
#include <cmath>

namespace gui {

namespace {

constexpr float slowestCoast = 50.0f;  // units per second
constexpr float coastSeconds = 0.25f;  // of the hand's speed
constexpr int coastMs = 1000;
constexpr double restingSeconds = 0.1;  // a hand that stood still for so long throws nothing
constexpr float smallestBar = 16.0f;
constexpr float verticalNotch = 30.0f;  // what platforms send for a notch of the wheel, logical units
constexpr float horizontalNotch = 25.0f;

}  // namespace

/// Stands between the area and what it shows. The mouse goes through it to the area.
class ScrollArea::PassingControl : public Control {
public:
    PassingControl(ScrollArea& scrollArea, Control& parent)
        : Control(scrollArea.userInterface, &parent), area(scrollArea)
    {}

    void MouseDown(int pressedButton, Point point, int inputFlags) override
    {
        area.MouseDown(pressedButton, ToArea(point), inputFlags);
    }
    void MouseMoved(Point point, int inputFlags) override { area.MouseMoved(ToArea(point), inputFlags); }
    void MouseUp(int releasedButton, Point point, int inputFlags) override
    {
        area.MouseUp(releasedButton, ToArea(point), inputFlags);
    }

private:
    Point ToArea(Point point) const { return area.FromRoot(ToRoot(point)); }

    ScrollArea& area;
};

ScrollArea::ScrollArea(UserInterface& ui, Control* parent, Animator* controlAnimator)
    : AnimatedControl(ui, parent, controlAnimator),
      view(std::make_unique<PassingControl>(*this, *this)),
      content(std::make_unique<PassingControl>(*this, *view))
{}

ScrollArea::~ScrollArea() = default;

Rect ScrollArea::ViewRect() const
{
    const Rect& insets = Insets.value();
    const auto isShown = [](const auto& gutter) { return gutter && gutter->Visible.value(); };
    const float below = isShown(horizontalGutter) ? ScrollGutterX.value() : 0.0f;
    const float beside = isShown(verticalGutter) ? ScrollGutterY.value() : 0.0f;
    return {insets.left, insets.top, std::max(clientRect.right - insets.right - beside, insets.left),
            std::max(clientRect.bottom - insets.bottom - below, insets.top)};
}

Point ScrollArea::ScrollRange() const
{
    const Rect shown = ViewRect();
    return {std::max(ContentWidth.value() - shown.Width(), 0.0f),
            std::max(ContentHeight.value() - shown.Height(), 0.0f)};
}

void ScrollArea::Resized()
{
    LayOut();
    AnimatedControl::Resized();
}

void ScrollArea::LayOut()
{
    if (layingOut)
        return;
    layingOut = true;
    LayOutBars();
    const Rect shown = ViewRect();
    const Point range = ScrollRange();
    view->SetBounds(shown.left, shown.top, shown.Width(), shown.Height());
    const bool fills = !CentersContent.value();
    content->SetSize({std::max(ContentWidth.value(), fills ? shown.Width() : 0.0f),
                      std::max(ContentHeight.value(), fills ? shown.Height() : 0.0f)});
    ScrollX.setLimits(0.0f, range.x);
    ScrollY.setLimits(0.0f, range.y);
    layingOut = false;
    PlaceContent();
}

void ScrollArea::PlaceContent()
{
    const auto centred = [&](float viewLength, float length) {
        return CentersContent.value() ? std::max((viewLength - length) * 0.5f, 0.0f) : 0.0f;
    };
    content->SetPosition({centred(view->GetWidth(), content->GetWidth()) - ScrollX.value(),
                          centred(view->GetHeight(), content->GetHeight()) - ScrollY.value()});
    const auto placeBar = [&](ScrollBarGutter* gutter, Orientation axis) {
        if (!gutter)
            return;
        const bool vertical = axis == Orientation::Vertical;
        const float range = vertical ? ScrollRange().y : ScrollRange().x;
        const float length = BarLength(axis);
        const float way = (vertical ? gutter->GetHeight() : gutter->GetWidth()) - length;
        const float at = range > 0.0f ? ScrollOf(axis).value() / range * way : 0.0f;
        if (vertical)
            gutter->Bar().SetBounds(0.0f, at, gutter->GetWidth(), length);
        else
            gutter->Bar().SetBounds(at, 0.0f, length, gutter->GetHeight());
    };
    placeBar(horizontalGutter.get(), Orientation::Horizontal);
    placeBar(verticalGutter.get(), Orientation::Vertical);
    OnScrolled.fire(this);
}

void ScrollArea::LayOutBars()
{
    const auto prepare = [&](std::unique_ptr<ScrollBarGutter>& gutter, bool wanted, Orientation axis) {
        if (!gutter && wanted)
            gutter = std::make_unique<ScrollBarGutter>(*this, axis);
        if (gutter)
            gutter->Visible.assign(wanted);
    };
    // Whether a bar is needed is seen without the bars.
    const Point room = clientRect.Size();
    const Rect& insets = Insets.value();
    const bool wide = ContentWidth.value() > room.x - insets.left - insets.right;
    const bool high = ContentHeight.value() > room.y - insets.top - insets.bottom;
    prepare(horizontalGutter, HorizontalBar.value() && (wide || !AutoHide.value()), Orientation::Horizontal);
    prepare(verticalGutter, VerticalBar.value() && (high || !AutoHide.value()), Orientation::Vertical);
    const Rect shown = ViewRect();
    if (horizontalGutter)
        horizontalGutter->SetBounds(shown.left, shown.bottom, shown.Width(), ScrollGutterX.value());
    if (verticalGutter)
        verticalGutter->SetBounds(shown.right, shown.top, ScrollGutterY.value(), shown.Height());
}

float ScrollArea::BarLength(Orientation axis) const
{
    const bool vertical = axis == Orientation::Vertical;
    const Rect shown = ViewRect();
    const float viewLength = vertical ? shown.Height() : shown.Width();
    const float whole = std::max(vertical ? ContentHeight.value() : ContentWidth.value(), viewLength);
    if (!(whole > 0.0f))
        return 0.0f;
    return std::min(std::max(viewLength * viewLength / whole, smallestBar), viewLength);
}

double ScrollArea::Seconds() const { return static_cast<double>(userInterface.Clock()()) * 0.001; }

void ScrollArea::StopScrolling()
{
    if (Animator* const running = GetAnimator()) {
        running->Stop(AnimationKey(&ScrollX));
        running->Stop(AnimationKey(&ScrollY));
    }
}

void ScrollArea::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    AnimatedControl::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || pressedButton != MouseButton::left)
        return;
    StopScrolling();
    dragMode = HandDrag.value() ? DragMode::Hand : DragMode::None;
    velocity = {};
    sampleTime = Seconds();
    pressPosition = samplePosition = point;
    startScroll = {ScrollX.value(), ScrollY.value()};
}

void ScrollArea::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    AnimatedControl::MouseMoved(point, inputFlags);
    if (guard.IsAlive() && dragMode == DragMode::Hand && !(inputFlags & InputFlags::synthetic))
        DragHand(point);
}

void ScrollArea::DragHand(Point point)
{
    const double now = Seconds();
    if (now > sampleTime) {
        velocity = (samplePosition - point) * static_cast<float>(1.0 / (now - sampleTime));
        sampleTime = now;
        samplePosition = point;
    }
    const Point target = startScroll + pressPosition - point;
    ScrollX.assign(target.x);
    ScrollY.assign(target.y);
}

void ScrollArea::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    AnimatedControl::MouseUp(releasedButton, point, inputFlags);
    if (!guard.IsAlive() || releasedButton != MouseButton::left || dragMode != DragMode::Hand)
        return;
    dragMode = DragMode::None;
    if (Seconds() - sampleTime > restingSeconds)
        return;
    Coast(Orientation::Horizontal, velocity.x);
    Coast(Orientation::Vertical, velocity.y);
}

void ScrollArea::Coast(Orientation axis, float speed)
{
    Animator* const running = GetAnimator();
    if (!running || std::abs(speed) < slowestCoast)
        return;
    LimitedProperty<float>& scroll = ScrollOf(axis);
    const float range = axis == Orientation::Vertical ? ScrollRange().y : ScrollRange().x;
    const float target = std::clamp(scroll.value() + speed * coastSeconds, 0.0f, range);
    auto& coasting = running->Start<ValueAnimation<float>>(
        this, AnimationKey(&scroll), static_cast<ValueAssignable<float>&>(scroll), scroll.value(), target);
    coasting.Duration.assign(coastMs);
    coasting.Motion.assign(AnimationMotion::Decelerate);
}

bool ScrollArea::ScrollAlong(Orientation axis, float delta)
{
    LimitedProperty<float>& scroll = ScrollOf(axis);
    const float before = scroll.value();
    const ComponentGuard guard(*this);
    scroll.assign(before + delta);
    return !guard.IsAlive() || scroll.value() != before;
}

bool ScrollArea::WheelDelta(Point, int, float delta, Orientation axis)
{
    StopScrolling();
    // Up and left is back.
    if (axis == Orientation::Horizontal)
        return ScrollAlong(axis, delta / horizontalNotch * ScrollStepX.value());
    // A wheel has one axis. What can only be scrolled sideways goes with it.
    if (ScrollRange().y > 0.0f)
        return ScrollAlong(axis, -delta / verticalNotch * ScrollStepY.value());
    return ScrollAlong(Orientation::Horizontal, -delta / verticalNotch * ScrollStepX.value());
}

void ScrollArea::BeginBarDrag(Orientation axis, Point point)
{
    StopScrolling();
    dragMode = DragMode::Bar;
    const bool vertical = axis == Orientation::Vertical;
    const Point at = (vertical ? verticalGutter : horizontalGutter)->Bar().GetPosition();
    barGrab = vertical ? point.y - at.y : point.x - at.x;
}

void ScrollArea::DragBar(Orientation axis, Point point)
{
    if (dragMode != DragMode::Bar)
        return;
    const bool vertical = axis == Orientation::Vertical;
    const Control& gutter = vertical ? *verticalGutter : *horizontalGutter;
    const float way = (vertical ? gutter.GetHeight() : gutter.GetWidth()) - BarLength(axis);
    const float range = vertical ? ScrollRange().y : ScrollRange().x;
    ScrollOf(axis).assign(((vertical ? point.y : point.x) - barGrab) * range / std::max(way, 1.0f));
}

void ScrollArea::propertyChanged(AbstractProperty& property)
{
    AnimatedControl::propertyChanged(property);
    if (&property == &ScrollX || &property == &ScrollY) {
        if (!layingOut)
            PlaceContent();
    } else if (&property == &HorizontalBar || &property == &VerticalBar || &property == &AutoHide ||
               &property == &ContentWidth || &property == &ContentHeight || &property == &Insets ||
               &property == &ScrollGutterX || &property == &ScrollGutterY || &property == &CentersContent) {
        LayOut();
    }
}

}  // namespace gui
