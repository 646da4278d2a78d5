#include "gui/ScrollButton.h"

#include "gui/Bitmap.h"
#include "gui/ScrollStrip.h"
#include "gui/UserInterface.h"

#include <algorithm>

namespace gui {

namespace {

constexpr int firstRepeatMs = 300;
constexpr int repeatMs = 40;
constexpr int repetitionsToDouble = 10;
constexpr int mostSteps = 4;  // at once, after a long hold

}  // namespace

ScrollButton::ScrollButton(ScrollStrip& scrolledStrip, gui::Direction scrollDirection,
                           const Style* initialStyle)
    : Button(scrolledStrip.userInterface, &scrolledStrip, scrolledStrip.GetAnimator(), initialStyle),
      Direction(scrollDirection),
      strip(scrolledStrip),
      repeatTimer(scrolledStrip.userInterface.CreateTimer())
{
    DoubleClickEnabled.assign(false);
    repeatTimer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) { Repeat(); }));
}

int ScrollButton::GetAlphaAt(Point point) const
{
    if (!clientRect.Contains(point))
        return 0;
    const float middle = clientRect.Middle().x;
    if (Direction == gui::Direction::Left ? point.x < middle : point.x >= middle)
        return 255;
    const Bitmap* const arrow = Overlay();
    if (!arrow)
        return 0;
    const Point size = arrow->GetLogicalSize();
    return Rect::At(clientRect.Middle() - size * 0.5f, size).Contains(point) ? 255 : 0;
}

bool ScrollButton::ScrollOnce(float distance)
{
    const ComponentGuard guard(*this);
    const float before = strip.Area().ScrollX.value();
    strip.ScrollBy(Direction == gui::Direction::Left ? -distance : distance);
    return guard.IsAlive() && strip.Area().ScrollX.value() != before;
}

void ScrollButton::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    Button::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || !IsPressed())
        return;
    repetitions = 0;
    repeatTimer->Interval.assign(firstRepeatMs);
    repeatTimer->Running.assign(true);
    ScrollOnce(Step.value());
}

void ScrollButton::Repeat()
{
    repeatTimer->Interval.assign(repeatMs);
    const int steps = std::min(1 + repetitions++ / repetitionsToDouble, mostSteps);
    const ComponentGuard guard(*this);
    if (!ScrollOnce(Step.value() * static_cast<float>(steps)) && guard.IsAlive())
        repeatTimer->Running.assign(false);
}

void ScrollButton::MouseUp(int releasedButton, Point point, int inputFlags)
{
    if (releasedButton == MouseButton::left)
        repeatTimer->Running.assign(false);
    Button::MouseUp(releasedButton, point, inputFlags);
}

}  // namespace gui
