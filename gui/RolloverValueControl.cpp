#include "gui/RolloverValueControl.h"

namespace gui {

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
    if (&property == &BackgroundOpacity)
        Invalidate();
    ValueControl::propertyChanged(property);
}

void RolloverValueControl::ValuePropertyChanged(AbstractProperty& property)
{
    ValueControl::ValuePropertyChanged(property);
    Invalidate();
}

}  // namespace gui
