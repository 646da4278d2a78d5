#include "gui/DeviceBacking.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace gui {

namespace {

// Halfway or so between two levels: what a scale has to pass to reach the level above.
constexpr std::array<float, DeviceBacking::levelCount - 1> levelThresholds{1.2f, 1.4f, 1.6f, 1.8f,
                                                                           2.2f, 2.4f, 2.6f};

bool SkipCharacter(std::string_view& text, char character)
{
    if (text.empty() || text.front() != character)
        return false;
    text.remove_prefix(1);
    return true;
}

/// The level of a percentage at the front of `text`, which is taken off; -1 if there is none.
int TakeLevel(std::string_view& text)
{
    int percent = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), percent);
    if (error != std::errc())
        return -1;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return DeviceBacking::LevelOf(static_cast<float>(percent) * 0.01f);
}

int PercentOf(int level)
{
    return static_cast<int>(
        std::lround(DeviceBacking::levelScales[static_cast<std::size_t>(level)] * 100.0f));
}

}  // namespace

int DeviceBacking::LevelOf(float scale) noexcept
{
    return static_cast<int>(std::count_if(levelThresholds.begin(), levelThresholds.end(),
                                          [scale](float threshold) { return scale > threshold; }));
}

float DeviceBacking::Snap(float value) const noexcept { return std::floor(scale * value + 0.7f) / scale; }

void DeviceBacking::SetLevel(int level)
{
    nativeLevel = std::clamp(level, 0, levelCount - 1);
    ApplyScale();
}

void DeviceBacking::SetFullScreen(bool on)
{
    fullScreen = on;
    ApplyScale();
}

void DeviceBacking::SetDefaultFullScreenLevel(int level)
{
    defaultFullScreenLevel = std::clamp(level, -1, levelCount - 1);
    ApplyScale();
}

void DeviceBacking::SetChosenLevel(bool forFullScreen, int native, int chosen)
{
    LevelMap& map = forFullScreen ? fullScreenLevels : windowed;
    map[static_cast<std::size_t>(native)] = std::clamp(chosen, -1, levelCount - 1);
    ApplyScale();
}

int DeviceBacking::AdjustedLevel(int native) const noexcept
{
    const int chosen = windowed[static_cast<std::size_t>(native)];
    return chosen < 0 ? native : chosen;
}

void DeviceBacking::ReadAdjustments(std::string_view text)
{
    windowed.fill(-1);
    fullScreenLevels.fill(-1);
    do {
        LevelMap& map = SkipCharacter(text, 'F') ? fullScreenLevels : windowed;
        const int native = TakeLevel(text);
        if (native < 0 || !SkipCharacter(text, ':'))
            break;
        const int chosen = TakeLevel(text);
        if (chosen < 0)
            break;
        map[static_cast<std::size_t>(native)] = chosen;
    } while (SkipCharacter(text, ','));
    ApplyScale();
}

std::string DeviceBacking::WriteAdjustments() const
{
    std::string text;
    const auto write = [&text](const char* prefix, const LevelMap& map) {
        for (int native = 0; native < levelCount; ++native) {
            const int chosen = map[static_cast<std::size_t>(native)];
            if (chosen < 0)
                continue;
            if (!text.empty())
                text += ',';
            text.append(prefix)
                .append(std::to_string(PercentOf(native)))
                .append(1, ':')
                .append(std::to_string(PercentOf(chosen)));
        }
    };
    write("", windowed);
    write("F", fullScreenLevels);
    return text;
}

void DeviceBacking::RemoveListener(BackingScaleListener& listener) { std::erase(listeners, &listener); }

int DeviceBacking::LevelInForce() const noexcept
{
    const int chosen = (fullScreen ? fullScreenLevels : windowed)[static_cast<std::size_t>(nativeLevel)];
    if (chosen >= 0)
        return chosen;
    return fullScreen && defaultFullScreenLevel >= 0 ? defaultFullScreenLevel : nativeLevel;
}

void DeviceBacking::ApplyScale()
{
    const float newScale = levelScales[static_cast<std::size_t>(LevelInForce())];
    if (isNear(newScale, scale))
        return;
    scale = newScale;
    // A listener may remove itself or others, whose places then close up.
    for (std::size_t i = listeners.size(); i-- > 0;) {
        if (i < listeners.size())
            listeners[i]->BackingScaleChanged();
    }
}

}  // namespace gui
