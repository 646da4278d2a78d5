#include "wave/FloatParameter.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace {

/// The part behind the point, with the sign of `x`.
float fraction(float x) noexcept { return x - std::trunc(x); }

}  // namespace

FloatParameter::FloatParameter(wave::Environment& owner, float initial)
    : environment(owner),
      targetValue(initial),
      minimum(std::min(initial, 0.0f)),
      maximum(std::max(initial, 1.0f)),
      block(owner),
      rampStart(initial),
      span(maximum - minimum)
{}

void FloatParameter::setRange(float newMinimum, float newMaximum, float newSpan) noexcept
{
    minimum = newMinimum;
    maximum = newMaximum;
    span = newSpan > 0.0f ? newSpan : maximum - minimum;
    const float limited = targetValue < minimum ? minimum : std::min(maximum, targetValue);
    if (limited == targetValue)
        return;
    targetValue = rampStart = limited;
    finishRamp();
}

void FloatParameter::finishRamp() noexcept { rampPosition = rampLength = filled = 0; }

bool FloatParameter::isStale() const noexcept
{
    return !freeRunning && (clock <= environment.softResetTime() || clock != environment.now());
}

void FloatParameter::setValue(float value, float rampMs) noexcept
{
    const float limited = value < minimum ? minimum : std::min(maximum, value);
    if (isNear(limited, targetValue))
        return;
    const bool stale = isStale();
    clock = environment.now();

    float from = targetValue;
    if (rampPosition < rampLength && !stale)
        from = static_cast<float>(rampPosition) * rampStep + rampStart;
    rampStart = from;
    rampPosition = 0;
    filled = 0;
    if (wrapPeriod > 0.0f)
        turnTheShortWay(from, limited);

    const float delta = limited - rampStart;
    if (rampMs < 0.0f)
        rampMs = stale ? 0.0f : automaticRampMs(delta);
    rampLength = static_cast<int>(rampMs * environment.sampleRate() * 0.001f);
    rampStep = rampLength > 0 ? delta / static_cast<float>(rampLength) : 0.0f;
    targetValue = limited;
}

void FloatParameter::turnTheShortWay(float from, float to) noexcept
{
    float turn = fraction(fraction(to / wrapPeriod) - fraction(from / wrapPeriod));
    if (turn > 0.5f)
        turn -= 1.0f;
    else if (turn < -0.5f)
        turn += 1.0f;
    rampStart = std::clamp(to - turn * wrapPeriod, minimum, maximum);
}

float FloatParameter::automaticRampMs(float delta) const noexcept
{
    // From 30 % of the range on a step is quick; below, the time grows with the square of what is missing to
    // 30 %.
    const float t = std::max(0.3f - std::fabs(delta) / span, 0.0f);
    return (slowRampMs - fastRampMs) * t * (t * 11.111111f) + fastRampMs;
}

wave::Block& FloatParameter::render(int count) noexcept
{
    if (freeRunning)
        return renderContinuing(count);
    const auto length = static_cast<std::uint64_t>(count);
    const bool wasReset = clock <= environment.softResetTime();
    if (clock == environment.now() && !wasReset) {
        clock += length;
        return renderContinuing(count);
    }
    int skip = rampLength - rampPosition;
    if (!wasReset)
        skip = static_cast<int>(
            std::min<std::uint64_t>(environment.now() - clock, static_cast<std::uint64_t>(skip)));
    clock = environment.now() + length;
    rampPosition += skip;
    return renderContinuing(count);
}

wave::Block& FloatParameter::renderContinuing(int count) noexcept
{
    float* out = block.data();
    if (rampPosition >= rampLength) {
        block.setConstant(true);
        if (filled < count) {
            std::fill(out + filled, out + count, targetValue);
            filled = count;
        }
        return block;
    }
    block.setConstant(false);
    const int moving = std::min(rampLength - rampPosition, count);
    double value = static_cast<float>(rampPosition) * rampStep + rampStart;
    for (int i = 0; i < moving; ++i) {
        out[i] = static_cast<float>(value);
        value += rampStep;
    }
    rampPosition += moving;
    std::fill(out + moving, out + count, targetValue);
    return block;
}
