#include "gui/AnimatedControl.h"

namespace gui {

AnimatedControl::AnimatedControl(UserInterface& ui, Control* parent, Animator* controlAnimator)
    : Control(ui, parent), animator(controlAnimator)
{
    if (animator)
        animatorWatch = animator->GetWatch();
}

AnimatedControl::~AnimatedControl()
{
    if (Animator* living = GetAnimator())
        living->Cancel(this);
}

}  // namespace gui
