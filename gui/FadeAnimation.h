#pragma once

#include "gui/Animation.h"

namespace gui {

class Control;

/// Fades a control. Its owner should be the control, so that it ends with it.
class FadeAnimation : public Animation {
public:
    /// From the present opacity.
    FadeAnimation(Animator& animationOwner, Control& fadedControl, int endOpacity);
    /// @param endOpacity, startOpacity  0..255
    FadeAnimation(Animator& animationOwner, Control& fadedControl, int endOpacity, int startOpacity);

protected:
    void Update(float progress) override;

private:
    Control& control;
    int end;
    int start;
};

}  // namespace gui
