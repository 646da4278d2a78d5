#pragma once

#include "gui/Animator.h"
#include "gui/Control.h"

namespace gui {

/// A control with animations of its own, which end with it.
class AnimatedControl : public Control {
public:
    /// @param controlAnimator  null for changes at once
    AnimatedControl(UserInterface& ui, Control* parent, Animator* controlAnimator);
    ~AnimatedControl() override;

    /// Null without one, or when it is gone.
    Animator* GetAnimator() const { return animatorWatch.IsAlive() ? animator : nullptr; }

private:
    Animator* animator;
    Lifeline::Watch animatorWatch;
};

}  // namespace gui
