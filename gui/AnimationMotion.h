#pragma once

namespace gui {

/// How an animation's progress follows time.
enum class AnimationMotion {
    Linear = 0,
    Smooth = 1,      // t^2 (3 - 2t): slow at both ends
    Accelerate = 2,  // a fourth power that starts slowly
    Decelerate = 3,  // the same turned around: ends slowly
};

/// @param t  0..1
/// 0..1
constexpr float ApplyMotion(AnimationMotion motion, float t) noexcept
{
    // (0.6 t + 0.4)^4 runs from 0.4^4 to 1; the two numbers bring that to 0..1.
    constexpr auto fourthPower = [](float x) {
        const float c = x * 0.6f + 0.4f;
        return (c * c * c * c - 0.025600003f) * 1.0262727f;
    };
    switch (motion) {
    case AnimationMotion::Smooth:
        return t * t * (3.0f - 2.0f * t);
    case AnimationMotion::Accelerate:
        return fourthPower(t);
    case AnimationMotion::Decelerate:
        return 1.0f - fourthPower(1.0f - t);
    case AnimationMotion::Linear:
        break;
    }
    return t;
}

}  // namespace gui
