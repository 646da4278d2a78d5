#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"
#include "gui/AnimationMotion.h"

#include <cstdint>

namespace gui {

class Animator;

/// Something that changes over a time and then ends. The animator owns it; it is made by `Animator::Start`.
/// Thread: main or render, with the root's lock held.
class Animation : public PropertyOwner {
public:
    explicit Animation(Animator& animationOwner);

    Property<int> Duration{200, this};  // milliseconds; 0 ends at the first step
    Property<AnimationMotion> Motion{AnimationMotion::Linear, this};
    NotifyEvent OnFinished;  // at its end, not when it is stopped

    /// Brings the target to where it belongs at the animator's time. At the end the animation is gone.
    virtual void Step();
    void propertyChanged(AbstractProperty&) override {}

protected:
    /// @param progress  0..1, along the motion; the last one is 1
    virtual void Update(float progress) = 0;

    Animator& animator;

private:
    std::uint32_t startTime;  // milliseconds of the animator's clock
};

}  // namespace gui
