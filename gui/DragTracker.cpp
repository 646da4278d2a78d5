#include "gui/DragTracker.h"

#include "gui/Control.h"
#include "gui/ModifierActions.h"
#include "gui/UserInterface.h"

#include <algorithm>
#include <cmath>

namespace gui {

namespace {

constexpr float doubleClickReach = 4.0f;    // logical units around a press that are no drag yet
constexpr float unitsPerStep = 20.0f;       // of the slowest drag over few steps
constexpr int manySteps = 100;              // from here on values feel continuous
constexpr float stepsPerWheelUnit = 0.04f;  // a notch of 30 units makes 1.2 steps

bool IsFine(int flags) { return (ModifierActions::Get(flags) & ModifierActions::fine) != 0; }

int TakeWhole(float amount, float bias, float& remainder)
{
    const int whole = static_cast<int>(amount + (amount > 0.0f ? bias : -bias));
    remainder = amount - static_cast<float>(whole);
    return whole;
}

}  // namespace

DragTracker::DragTracker(UserInterface& ui) : userInterface(ui), timer(createIntervalTimer(ui.Clock())) {}

void DragTracker::Restart(Point press)
{
    timer->restart();
    remainder = 0.0f;
    wheelRemainder = 0.0f;
    pressPosition = press;
}

bool DragTracker::IsStillPress(const Control& control, Point point)
{
    if (!control.DoubleClickEnabled.value() || pressPosition == nowhere)
        return false;
    const Point moved = point - pressPosition;
    if (std::abs(moved.x) <= doubleClickReach && std::abs(moved.y) <= doubleClickReach &&
        timer->elapsedMs() <= static_cast<std::uint32_t>(userInterface.Platform().GetDoubleClickTime()))
        return true;
    pressPosition = nowhere;
    return false;
}

int DragTracker::Track(const Control& control, Point point, float delta, int flags)
{
    if (IsStillPress(control, point))
        return 0;
    const auto ms = static_cast<float>(std::max(timer->elapsedMs(), 20u));
    timer->restart();
    speed = std::clamp(std::abs(delta) / ms, 0.0f, 0.1f) * 10.0f;

    const bool stepped = Stepped.value();
    const int stepCount = Steps.value();
    const float fine = FineFactor.value();
    if (IsFine(flags))
        delta *= fine;
    else if (Accelerated.value() && !stepped && stepCount >= manySteps)
        delta *= (1.0f - fine) * speed + fine;

    const auto range = static_cast<float>(stepCount);
    if (!(range > 0.0f))
        return 0;
    // Few steps on a long way would need long drags: one step per 20 units does at most.
    const float slowest = range * unitsPerStep;
    const float length = !stepped && PixelRange.value() >= slowest ? slowest : PixelRange.value();
    if (!(length > 0.0f))
        return 0;
    return TakeWhole(range * delta / length + remainder, stepped ? 0.4f : 0.0f, remainder);
}

int DragTracker::WheelSteps(float velocity, float delta, int flags)
{
    const int stepCount = Steps.value();
    if (stepCount <= 0)
        return 0;
    float amount = wheelRemainder;
    if (stepCount < manySteps) {
        amount += delta * stepsPerWheelUnit;
        const int direction = (velocity > 0.0f) - (velocity < 0.0f);
        if (direction != 0 && direction != wheelDirection) {
            amount = direction > 0 ? std::max(amount, 1.0f) : std::min(amount, -1.0f);
            wheelDirection = direction;
        }
    } else {
        if (IsFine(flags))
            velocity *= FineFactor.value();
        amount += static_cast<float>(stepCount) * velocity * WheelScale.value();
    }
    return TakeWhole(amount, 0.0f, wheelRemainder);
}

}  // namespace gui
