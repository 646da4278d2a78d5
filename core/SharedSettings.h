#pragma once

#include "core/SettingsBase.h"
#include "foundation/Realtime.h"

#include <atomic>
#include <cstdint>

/// How the interface is drawn: 0 in software; 1, 2 or 3 by the graphics processor, with a frame at most every
/// first, second or third 60th of a second. Bit 16: also with the graphics processors that are known for
/// faults.
enum class GraphicsAccelerationMode : std::int32_t {
    Off = 0,
    EveryFrame = 1,
    EverySecondFrame = 2,
    EveryThirdFrame = 3,
};

/// The settings that all instances of the process share.
class SharedSettings : public SettingsBase {
public:
    explicit SharedSettings(std::string settingsKey) : SettingsBase(std::move(settingsKey)) {}

    void serialize(SettingSerializer& serializer) override;
    void propertyChanged(AbstractProperty& property) override;

    /// `enableMIDIProgramChanges` for the audio thread. Thread: any.
    bool takesProgramChanges() const noexcept REALTIME
    {
        return programChanges.load(std::memory_order_relaxed);
    }

    /// A list of presets searches for what is typed.
    Property<bool> presetBrowserTypeToSearch{true, this};
    Property<bool> enableMIDIProgramChanges{false, this};
    Property<GraphicsAccelerationMode> graphicsAcceleration{GraphicsAccelerationMode::EveryFrame, this};
    /// The interface scale: 1 follows the platform, other values below 100 keep 100 %, and from there on it
    /// is in per cent.
    LimitedProperty<int> retinaEnabled{1, 0, 300, this};
    Property<bool> showComponentDisplays{true, this};
    Property<bool> showInteractiveHelp{true, this};
    Property<bool> showWelcomeHint{false, this};

private:
    std::atomic<bool> programChanges{false};
};
