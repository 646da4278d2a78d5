#include "platform/WheelMotion.h"

#include "gui/InputFlags.h"

#include <algorithm>

namespace gui {

namespace {

constexpr std::uint32_t leastMs = 10;
constexpr std::uint32_t mostMs = 500;
constexpr float linesPerNotch = 3.0f;  // what desktops scroll by
constexpr float unitsPerLine = 10.0f;
constexpr float unitsPerColumn = 25.0f;  // a sideways notch

}  // namespace

WheelMotion::Scroll WheelMotion::Step(Orientation axis, float notches, int flags, std::uint32_t timeMs)
{
    std::optional<std::uint32_t>& last = lastTimeMs[static_cast<int>(axis)];
    const std::uint32_t pause = last ? std::clamp(timeMs - *last, leastMs, mostMs) : mostMs;
    last = timeMs;
    const float velocity = notches / static_cast<float>(pause);
    constexpr int sideways = InputFlags::ctrl | InputFlags::shift;
    const bool turned = axis == Orientation::Vertical && (flags & sideways) == sideways;
    if (axis == Orientation::Horizontal || turned)
        return {
            {velocity, 0.0f}, {notches * unitsPerColumn, 0.0f}, notches, turned ? flags & ~sideways : flags};
    return {{0.0f, velocity}, {0.0f, linesPerNotch * notches * unitsPerLine}, notches, flags};
}

}  // namespace gui
