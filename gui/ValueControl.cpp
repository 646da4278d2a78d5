#include "gui/ValueControl.h"

#include "gui/DragTracker.h"
#include "gui/RootControl.h"
#include "gui/ValueControlGroup.h"

#include <algorithm>
#include <cmath>

namespace gui {

ValueControl::ValueControl(UserInterface& ui, Control* parent, Animator* controlAnimator)
    : AnimatedControl(ui, parent, controlAnimator)
{}

ValueControl::~ValueControl()
{
    LeaveGroup();
    if (inGesture)
        EndGesture();
}

void ValueControl::SetWarp(WarpFunction forward, WarpFunction inverse)
{
    warpForward = std::move(forward);
    warpInverse = std::move(inverse);
    ValuePropertyChanged(Value);
}

float ValueControl::Normalize(int value) const
{
    return static_cast<float>(value - MinValue.value()) / static_cast<float>(Range());
}

int ValueControl::Denormalize(float normalized) const
{
    const double range = Range();
    const double steps = std::floor((0.5 / range + static_cast<double>(normalized)) * range);
    // A NaN, which no comparison finds, goes to the minimum.
    return MinValue.value() + (steps > 0.0 ? static_cast<int>(std::min(steps, range)) : 0);
}

float ValueControl::ToShown(int value) const
{
    const float normalized = Normalize(value);
    return Transform.value() == TransformBehavior::Warped && warpForward ? warpForward(normalized)
                                                                         : normalized;
}

int ValueControl::FromShown(float shown) const
{
    return Denormalize(Transform.value() == TransformBehavior::Warped && warpInverse ? warpInverse(shown)
                                                                                     : shown);
}

void ValueControl::SetNormalizedValue(float normalized)
{
    Value.assign(Denormalize(warpInverse ? warpInverse(normalized) : normalized));
}

void ValueControl::propertyChanged(AbstractProperty& property)
{
    if (&property == &DefaultValue || &property == &MaxValue || &property == &MinValue ||
        &property == &Value || &property == &ParameterIndex || &property == &Transform)
        ValuePropertyChanged(property);
    else
        AnimatedControl::propertyChanged(property);
}

void ValueControl::ValuePropertyChanged(AbstractProperty& property)
{
    if (&property == &MinValue && MinValue.value() >= MaxValue.value())
        MaxValue.assign(MinValue.value() + 1);
    if (&property == &MaxValue && MaxValue.value() <= MinValue.value())
        MinValue.assign(MaxValue.value() - 1);
    if (&property != &Value && &property != &MinValue && &property != &MaxValue)
        return;
    BringIntoRange();
    if (&property == &Value)
        TellGroup();
}

void ValueControl::BringIntoRange()
{
    const int low = MinValue.value();
    const int high = MaxValue.value();
    gestureValue = std::clamp(gestureValue, low, high);
    // The user's hand wins over whatever else sets the value.
    Value.assign(inGesture ? gestureValue : std::clamp(Value.value(), low, high));
    if (!inGesture)
        trackedValue = gestureValue = Value.value();
}

void ValueControl::UpdateGroupMode(int inputFlags)
{
    groupMode = (ModifierActions::Get(inputFlags) & ModifierActions::group) != 0;
}

void ValueControl::UpdateGroupBit(int index, bool active, int& changeFlags)
{
    const std::uint32_t bit = 1u << index;
    if (active == ((groupBits & bit) != 0))
        return;
    // The group may end, or this control may leave it, in a handler.
    const std::shared_ptr<Group> group = valueGroup;
    if (active) {
        groupStartValue = Value.value();
        groupBits |= bit;
    } else {
        groupBits &= ~bit;
        changeFlags |= ChangeFlag::fromValue;
    }
    if (group)
        group->Apply(*this, active ? GesturePhase::Begin : GesturePhase::End, index, 0, 0, trackedValue);
}

void ValueControl::ChangeValue(GesturePhase phase, int index, int delta, int changeFlags)
{
    const ComponentGuard guard(*this);
    const bool active = groupMode && valueGroup;
    switch (phase) {
    case GesturePhase::Begin:
        overshoot[static_cast<std::size_t>(index)] = 0;
        UpdateGroupBit(index, false, changeFlags);  // left over, if the last gesture had no end
        if (guard.IsAlive())
            UpdateGroupBit(index, active, changeFlags);
        if (guard.IsAlive())
            ApplyChange(phase, index, delta, changeFlags);
        break;
    case GesturePhase::Change:
        UpdateGroupBit(index, active, changeFlags);
        if (guard.IsAlive())
            ChangeAll(index, delta, changeFlags, active);
        break;
    case GesturePhase::End:
        UpdateGroupBit(index, false, changeFlags);
        if (guard.IsAlive())
            ApplyChange(phase, index, delta, changeFlags);
        break;
    }
}

int ValueControl::LimitDelta(int index, int delta, int changeFlags, bool active)
{
    if (changeFlags & (ChangeFlag::toStart | ChangeFlag::unasked))
        return delta;
    int& over = overshoot[static_cast<std::size_t>(index)];
    if (changeFlags & ChangeFlag::fromValue || resetting)
        over = 0;
    // What the hand went too far it comes back first.
    if ((over > 0 && delta < 0) || (over < 0 && delta > 0)) {
        const int returned = over > 0 ? std::min(over, -delta) : -std::min(-over, delta);
        over -= returned;
        delta += returned;
    }
    int limit = ApplyChange(GesturePhase::Change, index, delta, changeFlags | ChangeFlag::dryRun);
    if (active && valueGroup)
        limit = std::max(limit, valueGroup->Apply(*this, GesturePhase::Change, index, delta,
                                                  changeFlags | ChangeFlag::dryRun, trackedValue + delta));
    const int limited = std::clamp(delta, -limit, limit);
    over += delta - limited;
    return limited;
}

void ValueControl::ChangeAll(int index, int delta, int changeFlags, bool active)
{
    const ComponentGuard guard(*this);
    const std::shared_ptr<Group> group = active ? valueGroup : nullptr;
    delta = LimitDelta(index, delta, changeFlags, active);
    if (!guard.IsAlive())
        return;
    ValueControlListener* const batch = group && group->members.size() > 2 ? listener : nullptr;
    const int target = (changeFlags & ChangeFlag::fromValue ? Value.value() : trackedValue) + delta;
    if (batch)
        batch->BeginBatch();
    if (guard.IsAlive())
        ApplyChange(GesturePhase::Change, index, delta, changeFlags);
    if (guard.IsAlive() && group)
        group->Apply(*this, GesturePhase::Change, index, delta, changeFlags, target);
    if (batch)
        batch->EndBatch();
}

int ValueControl::ApplyChange(GesturePhase phase, int, int delta, int changeFlags)
{
    switch (phase) {
    case GesturePhase::Begin:
        BeginGesture();
        return 0;
    case GesturePhase::Change:
        return ApplyStep(delta, changeFlags);
    case GesturePhase::End:
        EndGesture();
        return 0;
    }
    return 0;
}

void ValueControl::BeginGesture()
{
    const ComponentGuard guard(*this);
    if (inGesture)
        EndGesture();
    if (!guard.IsAlive())
        return;
    gestureValue = trackedValue = groupStartValue = Value.value();
    inGesture = true;
    if (listener)
        listener->ValueGesture(*this, GesturePhase::Begin, 0);
    if (guard.IsAlive())
        OnGestureBegin.fire(this);
}

int ValueControl::ApplyStep(int delta, int changeFlags)
{
    const int current = Value.value();
    const int base = changeFlags & ChangeFlag::toStart     ? groupStartValue - delta
                     : changeFlags & ChangeFlag::fromValue ? current
                                                           : trackedValue;
    const int moved = std::clamp(base + delta, MinValue.value(), MaxValue.value());
    const bool forReset = resetting;
    int change = std::abs(moved - current);
    if (!forReset && listener)
        change = std::max(change, listener->GetAllowedChange(*this, delta, delta));
    if (changeFlags & ChangeFlag::dryRun)
        return change;
    trackedValue = base + delta;
    if (change < 1 && !(forReset && ResetAlways.value()))
        return change;
    const ComponentGuard guard(*this);
    gestureValue = moved;
    Value.assign(moved);
    if (listener)
        listener->ValueGesture(*this, GesturePhase::Change, forReset ? 0 : delta);
    if (guard.IsAlive())
        ValueChanged();
    return change;
}

void ValueControl::EndGesture()
{
    const ComponentGuard guard(*this);
    trackedValue = Value.value();
    inGesture = false;
    wheeling = false;
    if (listener)
        listener->ValueGesture(*this, GesturePhase::End, 0);
    if (guard.IsAlive())
        OnGestureEnd.fire(this);
}

void ValueControl::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    const bool wasCaptured = captureMode != CaptureMode::None;
    AnimatedControl::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || pressedButton != MouseButton::left)
        return;
    // A handler may have taken the press away again: nobody would end its gesture.
    if (!wasCaptured || captureMode != CaptureMode::None)
        ChangeValue(GesturePhase::Begin, 0);
}

void ValueControl::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    AnimatedControl::MouseUp(releasedButton, point, inputFlags);
    if (guard.IsAlive() && releasedButton == MouseButton::left && inGesture)
        ChangeValue(GesturePhase::End, 0);
}

void ValueControl::CancelMouse()
{
    ReleaseKnowingly([this] { AnimatedControl::CancelMouse(); });
}

void ValueControl::CaptureReleased()
{
    // A release clears the root's button before it takes the capture. With the button still down somebody
    // else took it, and no release will come here.
    const RootControl* root = GetRoot();
    const bool taken = captureMode == CaptureMode::Button && !releaseIsKnown && root && root->IsLeftDown();
    AnimatedControl::CaptureReleased();
    if (taken)
        MouseUp(MouseButton::left, {-32.0f, 0.0f}, 0);
}

bool ValueControl::ResetOnRequest(int inputFlags)
{
    if (!(ModifierActions::Get(inputFlags) & ModifierActions::reset))
        return false;
    JumpTo(DefaultValue.value());
    return true;
}

void ValueControl::JumpTo(int value)
{
    const ComponentGuard guard(*this);
    resetting = true;
    ChangeValue(GesturePhase::Change, value - trackedValue);
    if (guard.IsAlive())
        resetting = false;
}

bool ValueControl::PrepareWheel(bool dragging, ScrollPhase phase)
{
    if (dragging)
        return false;
    const ComponentGuard guard(*this);
    if (phase == ScrollPhase::End) {
        if (wheeling)
            ChangeValue(GesturePhase::End, 0);
        return false;
    }
    if (!wheeling) {
        ChangeValue(GesturePhase::Begin, 0);
        if (!guard.IsAlive())
            return false;
        wheeling = true;
    }
    // A wheel has no place to come back to, as a hand has: it turns the value around at once.
    overshoot.fill(0);
    return phase == ScrollPhase::Change;
}

bool ValueControl::TrackWheel(DragTracker& tracker, bool dragging, ScrollPhase phase, int inputFlags,
                              float velocity, float delta)
{
    if (!dragging && phase == ScrollPhase::Begin)
        tracker.Restart();
    const ComponentGuard guard(*this);
    if (!dragging)
        UpdateGroupMode(inputFlags);
    if (PrepareWheel(dragging, phase))
        ChangeValue(GesturePhase::Change, tracker.WheelSteps(velocity, delta, inputFlags));
    if (guard.IsAlive() && !dragging && phase == ScrollPhase::End)
        UpdateGroupMode(0);
    return true;
}

void ValueControl::LinkWith(ValueControl& other)
{
    if (&other == this || (valueGroup && valueGroup == other.valueGroup))
        return;
    if (!valueGroup && other.valueGroup) {
        valueGroup = other.valueGroup;
        valueGroup->members.push_back(this);
        return TellGroup();
    }
    if (!valueGroup) {
        valueGroup = std::make_shared<Group>();
        valueGroup->members.push_back(this);
    }
    const std::shared_ptr<Group> old = other.valueGroup;
    for (ValueControl* joining : old ? old->members : std::vector<ValueControl*>{&other}) {
        joining->valueGroup = valueGroup;
        valueGroup->members.push_back(joining);
    }
    if (old)
        old->members.clear();
    TellGroup();
}

/// All members see how they stand to each other.
void ValueControl::TellGroup() const
{
    if (valueGroup)
        for (ValueControl* member : valueGroup->members)
            member->GroupMemberChanged();
}

void ValueControl::Unlink()
{
    const ComponentGuard guard(*this);
    LeaveGroup();
    if (guard.IsAlive())
        GroupMemberChanged();
}

void ValueControl::LeaveGroup()
{
    const std::shared_ptr<Group> group = std::exchange(valueGroup, nullptr);
    if (!group)
        return;
    // Whom this control leads gets the end of its gesture. If it is led itself, it gets it here.
    for (int index = 0; groupBits != 0; ++index) {
        const std::uint32_t bit = 1u << index;
        if (groupBits & bit) {
            groupBits &= ~bit;
            group->Apply(*this, GesturePhase::End, index, 0, 0, trackedValue);
        }
    }
    for (int index = 0; ledBits != 0; ++index) {
        const std::uint32_t bit = 1u << index;
        if (ledBits & bit) {
            ledBits &= ~bit;
            ApplyChange(GesturePhase::End, index, 0, 0);
        }
    }
    std::erase(group->members, this);
    if (group->members.size() == 1) {
        ValueControl& last = *group->members.front();
        group->members.clear();
        last.valueGroup = nullptr;
        last.GroupMemberChanged();
    }
}

}  // namespace gui
