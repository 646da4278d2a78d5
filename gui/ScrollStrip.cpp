#include "gui/ScrollStrip.h"

#include "gui/ValueAnimation.h"

namespace gui {

ScrollStrip::ScrollStrip(UserInterface& ui, Control* parent, Animator* controlAnimator,
                         const Button::Style* leftStyle, const Button::Style* rightStyle)
    : AnimatedControl(ui, parent, controlAnimator),
      strip(ui, this, controlAnimator),
      leftButton(*this, Direction::Left, leftStyle),
      rightButton(*this, Direction::Right, rightStyle)
{
    strip.OnScrolled.setHandler(NotifyEvent::handler([this](void*) { ShowButtons(); }));
    ShowButtons();
}

void ScrollStrip::ScrollTo(float x)
{
    strip.StopScrolling();
    strip.ScrollX.assign(x);
}

void ScrollStrip::Resized()
{
    LayOut();
    AnimatedControl::Resized();
}

bool ScrollStrip::WheelDelta(Point point, int inputFlags, float delta, Orientation axis)
{
    return strip.WheelDelta(point, inputFlags, delta, axis);
}

void ScrollStrip::LayOut()
{
    strip.SetBounds(0.0f, 0.0f, GetWidth(), GetHeight());
    const auto middle = [this](const Button& end) { return (GetHeight() - end.GetHeight()) * 0.5f; };
    leftButton.SetPosition({0.0f, middle(leftButton)});
    rightButton.SetPosition({GetWidth() - rightButton.GetWidth(), middle(rightButton)});
    ShowButtons();
}

void ScrollStrip::ShowButtons()
{
    leftButton.Visible.assign(strip.ScrollX.value() > 0.0f);
    rightButton.Visible.assign(strip.ScrollX.value() < strip.ScrollRange().x - geometryTolerance);
}

void ScrollStrip::propertyChanged(AbstractProperty& property)
{
    AnimatedControl::propertyChanged(property);
    if (&property != &ScrollStep)
        return;
    strip.ScrollStepX.assign(ScrollStep.value());
    leftButton.Step.assign(ScrollStep.value());
    rightButton.Step.assign(ScrollStep.value());
}

}  // namespace gui
