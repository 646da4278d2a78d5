#pragma once

#include "core/SharedSettings.h"

#include <atomic>
#include <optional>

class SettingSerializer;

/// How the interfaces of all instances are drawn, by the settings. Read on any thread; changed on a main one.
class InterfaceDrawing {
public:
    GraphicsAccelerationMode graphicsMode() const noexcept { return mode.load(); }
    /// 0.0: as the platform has it.
    float interfaceScale() const noexcept { return scale.load(); }

    /// Goes by the settings of the product, but for what those of the maker tell.
    void apply(const SharedSettings& settings);
    /// Reads what the maker's settings tell for all products. It takes effect with the next `apply`.
    void readMakerSettings(SettingSerializer& reader);

private:
    std::atomic<GraphicsAccelerationMode> mode{GraphicsAccelerationMode::EveryFrame};
    std::atomic<float> scale{0.0f};
    std::optional<int> makersMode;
    std::optional<int> makersScale;  // as `SharedSettings::retinaEnabled`
};
