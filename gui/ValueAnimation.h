#pragma once

#include "foundation/ValueAssignable.h"
#include "gui/Animation.h"

#include <functional>
#include <utility>

namespace gui {

/// Moves a value from `start` to `end`: a property, or what a setter takes.
/// @tparam T  what it counts in
/// @tparam U  what the target takes; a fraction is cut off where that holds none
template <class T, class U = T>
class ValueAnimation : public Animation {
public:
    /// @param target  outlives the animation
    ValueAnimation(Animator& animationOwner, ValueAssignable<U>& target, T startValue, T endValue)
        : ValueAnimation(
              animationOwner, [&target](U value) { target.assign(value); }, startValue, endValue)
    {}
    ValueAnimation(Animator& animationOwner, std::function<void(U)> targetSetter, T startValue, T endValue)
        : Animation(animationOwner), setter(std::move(targetSetter)), end(endValue), start(startValue)
    {}

protected:
    void Update(float progress) override
    {
        // The end exactly: start + (end - start) need not round to it.
        setter(progress >= 1.0f
                   ? static_cast<U>(end)
                   : static_cast<U>(static_cast<float>(start) + static_cast<float>(end - start) * progress));
    }

private:
    std::function<void(U)> setter;
    T end;
    T start;
};

}  // namespace gui
