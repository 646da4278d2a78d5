#include "gui/BarAnimation.h"

#include "gui/ControlBar.h"

#include <algorithm>

namespace gui {

namespace {

/// 1 at 0 to 0 at 1, ending slowly.
float Remaining(float t) { return std::max(ApplyMotion(AnimationMotion::Accelerate, 1.0f - t), 0.0f); }

}  // namespace

BarAnimation::BarAnimation(Animator& animationOwner, ControlBar& controlBar, Control& barControl,
                           Kind animationKind, float givenSize)
    : Animation(animationOwner),
      bar(controlBar),
      control(barControl),
      kind(animationKind),
      flags(controlBar.BarAnimationFlags.value()),
      startOpacity(barControl.Opacity.value()),
      fullSize(controlBar.LengthOf(barControl))
{
    if (kind == Kind::OpeningTo || kind == Kind::ClosingFrom) {
        fullSize = givenSize;
        flags = ControlBar::AnimationFlag::size;
    }
}

void BarAnimation::Update(float progress)
{
    constexpr int both = ControlBar::AnimationFlag::size | ControlBar::AnimationFlag::opacity;
    const bool inTurn = (flags & both) == both;
    const float first = inTurn ? std::min(2.0f * progress, 1.0f) : progress;
    const float second = inTurn ? std::max(2.0f * progress - 1.0f, 0.0f) : progress;
    if (kind == Kind::Closing || kind == Kind::ClosingFrom)
        UpdateClosing(first, second);
    else
        UpdateOpening(first, second);
}

void BarAnimation::UpdateClosing(float first, float second)
{
    if (flags & ControlBar::AnimationFlag::opacity)
        control.Opacity.assign(
            static_cast<int>(static_cast<float>(startOpacity) - static_cast<float>(startOpacity) * first));
    if (flags & ControlBar::AnimationFlag::size)
        bar.SetLength(control, Remaining(second) * fullSize);
}

void BarAnimation::UpdateOpening(float first, float second)
{
    if (flags & ControlBar::AnimationFlag::size)
        bar.SetLength(control, (1.0f - Remaining(first)) * fullSize);
    if (flags & ControlBar::AnimationFlag::opacity)
        control.Opacity.assign(static_cast<int>(static_cast<float>(startOpacity) * second));
}

}  // namespace gui
