#pragma once

#include "foundation/Property.h"
#include "gui/ICanvas.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace gui {

/// The scale of an interface: one of eight levels, chosen by the monitor's and the user's table.
class DeviceBacking : public PropertyOwner, public IDeviceBacking {
public:
    class BackingScaleListener {
    public:
        virtual ~BackingScaleListener() = default;
        virtual void BackingScaleChanged() = 0;
    };

    static constexpr int levelCount = 8;
    static constexpr std::array<float, levelCount> levelScales{1.0f, 1.25f, 1.5f, 1.75f,
                                                               2.0f, 2.25f, 2.5f, 3.0f};
    /// The level of a scale, 0..7: 1.3 is level 1, 2.7 level 7.
    static int LevelOf(float scale) noexcept;

    DeviceBacking() { windowed.fill(-1), fullScreenLevels.fill(-1); }

    float Snap(float value) const noexcept override;
    float Scale() const noexcept override { return scale; }

    /// The level of the monitor, 0..7. Listeners hear of it if the scale in force changes.
    void SetLevel(int level);
    void SetFullScreen(bool on);
    /// -1 for none: full screen then takes the native level.
    void SetDefaultFullScreenLevel(int level);
    /// Which level to use where the monitor's is `native`; -1 takes the entry away.
    void SetChosenLevel(bool forFullScreen, int native, int chosen);
    /// The level a window on a monitor of `native` gets outside of full screen.
    int AdjustedLevel(int native) const noexcept;

    /// Reads "125:150,F200:100": native percent, colon, chosen percent, "F" for full screen. Stops at the
    /// first entry that can't be read; what was read before it holds, on top of emptied tables.
    void ReadAdjustments(std::string_view text);
    /// The windowed entries first, then those of full screen.
    std::string WriteAdjustments() const;

    void AddListener(BackingScaleListener& listener) { listeners.push_back(&listener); }
    void RemoveListener(BackingScaleListener& listener);

    void propertyChanged(AbstractProperty&) override {}

private:
    using LevelMap = std::array<int, levelCount>;

    int LevelInForce() const noexcept;
    void ApplyScale();

    LevelMap windowed{};
    LevelMap fullScreenLevels{};
    std::vector<BackingScaleListener*> listeners;  // told from the last to the first
    int nativeLevel = 0;
    int defaultFullScreenLevel = -1;
    bool fullScreen = false;
    float scale = 1.0f;
};

}  // namespace gui
