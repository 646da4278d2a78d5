#include "gui/RolloverValueControl.h"

namespace gui {

namespace {

constexpr int disabledAlpha = 102;  // 40 %, of 255

}  // namespace

RolloverValueControl::RolloverValueControl(UserInterface& ui, Control* parent, Animator* controlAnimator)
    : ValueControl(ui, parent, controlAnimator)
{}

void RolloverValueControl::MouseEntered()
{
    hovering = true;
    UpdateRollover();
    ValueControl::MouseEntered();
}

void RolloverValueControl::MouseLeft()
{
    hovering = false;
    UpdateRollover();
    ValueControl::MouseLeft();
}

void RolloverValueControl::propertyChanged(AbstractProperty& property)
{
    if (&property == &Highlighted)
        UpdateRollover();
    if (&property == &BackgroundOpacity || &property == &Enabled)
        Invalidate();
    ValueControl::propertyChanged(property);
}

int RolloverValueControl::ShownAlpha(int alpha) const
{
    const bool isFaint = !Enabled.value() && Opacity.value() == 255;
    return isFaint ? AlphaProduct(alpha, disabledAlpha) : alpha;
}

void RolloverValueControl::ValuePropertyChanged(AbstractProperty& property)
{
    ValueControl::ValuePropertyChanged(property);
    Invalidate();
}

bool RolloverValueControl::TakePress(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    RolloverValueControl::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || pressedButton != MouseButton::left || !IsInGesture())
        return false;
    return !(inputFlags & InputFlags::doubleClick) || !DoubleClickEnabled.value();
}

bool RolloverValueControl::TakeRelease(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    RolloverValueControl::MouseUp(releasedButton, point, inputFlags);
    if (!guard.IsAlive() || releasedButton != MouseButton::left)
        return false;
    UpdateGroupMode(0);
    return true;
}

}  // namespace gui
