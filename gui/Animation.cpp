#include "gui/Animation.h"

#include "gui/Animator.h"

namespace gui {

Animation::Animation(Animator& animationOwner) : animator(animationOwner), startTime(animationOwner.Now()) {}

void Animation::Step()
{
    const std::uint32_t elapsed = animator.Now() - startTime;
    const int duration = Duration.value();
    if (duration > 0 && elapsed < static_cast<std::uint32_t>(duration))
        return Update(
            ApplyMotion(Motion.value(), static_cast<float>(elapsed) / static_cast<float>(duration)));
    const Lifeline::Watch animatorWatch = animator.GetWatch();
    Update(1.0f);
    OnFinished.fire(this);
    if (animatorWatch.IsAlive())
        animator.Stop(*this);
}

}  // namespace gui
