#include "gui/FadeAnimation.h"

#include "gui/Control.h"

namespace gui {

FadeAnimation::FadeAnimation(Animator& animationOwner, Control& fadedControl, int endOpacity)
    : FadeAnimation(animationOwner, fadedControl, endOpacity, fadedControl.Opacity.value())
{}

FadeAnimation::FadeAnimation(Animator& animationOwner, Control& fadedControl, int endOpacity,
                             int startOpacity)
    : Animation(animationOwner), control(fadedControl), end(endOpacity), start(startOpacity)
{}

void FadeAnimation::Update(float progress)
{
    control.Opacity.assign(
        static_cast<int>(static_cast<float>(end - start) * progress + static_cast<float>(start)));
}

}  // namespace gui
