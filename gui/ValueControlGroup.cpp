#include "gui/ValueControlGroup.h"

#include <algorithm>
#include <cmath>

namespace gui {

namespace {

constexpr float smallestScaled = 0.0005f;  // a ratio to less than this says nothing

}  // namespace

bool ValueControl::Group::Contains(const ValueControl& control) const
{
    return std::find(members.begin(), members.end(), &control) != members.end();
}

int ValueControl::Group::MemberDelta(const ValueControl& leader, const ValueControl& member, int delta,
                                     int target) const
{
    if (mode == Mode::Same)
        return delta;
    if (mode == Mode::Opposite)
        return -delta;
    // From the start of the gesture, so that the rounding of many small steps doesn't add up.
    const float before = Measure(leader.Normalize(leader.groupStartValue));
    const float after = Measure(std::max(leader.Normalize(target), 0.0f));
    const float start = member.Normalize(member.groupStartValue);
    float moved = start;
    if (mode == Mode::Difference) {
        moved = start + after - before;
    } else if (before > smallestScaled) {
        const float product = Measure(start) * after / before;
        moved = inverse ? inverse(product) : product;
    }
    return member.Denormalize(moved) - member.trackedValue;
}

int ValueControl::Group::Apply(ValueControl& leader, GesturePhase phase, int index, int delta, int flags,
                               int target)
{
    int largest = 0;
    // A copy: handlers may link and delete controls.
    for (ValueControl* member : std::vector<ValueControl*>(members)) {
        if (member == &leader || !Contains(*member))
            continue;
        const std::uint32_t bit = 1u << index;
        if (phase == GesturePhase::Begin)
            member->ledBits |= bit;
        if (phase == GesturePhase::End)
            member->ledBits &= ~bit;
        const int amount = phase == GesturePhase::Change ? MemberDelta(leader, *member, delta, target) : 0;
        largest = std::max(largest, member->ApplyChange(phase, index, amount, flags));
    }
    // Where a ratio takes the leader past its end, the members stop with it.
    const int end = leader.MaxValue.value();
    if (mode == Mode::Ratio && phase == GesturePhase::Change && target > end)
        return std::abs(end - leader.Value.value());
    return largest;
}

}  // namespace gui
