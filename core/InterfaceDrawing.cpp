#include "core/InterfaceDrawing.h"

#include "core/SettingSerializer.h"

#include <algorithm>

namespace {

constexpr int missing = -1;
constexpr int followPlatform = 1;
constexpr int percent = 100;
constexpr int highestScale = 300;  // per cent

float scaleOf(int setting)
{
    if (setting == followPlatform)
        return 0.0f;
    return setting < percent ? 1.0f : static_cast<float>(setting) * 0.01f;
}

std::optional<int> readNumber(SettingSerializer& reader, const char* key)
{
    const int number = reader.intValue(key, missing, missing);
    return number == missing ? std::nullopt : std::optional(number);
}

}  // namespace

void InterfaceDrawing::apply(const SharedSettings& settings)
{
    const auto ownMode = static_cast<int>(settings.graphicsAcceleration.value());
    mode.store(static_cast<GraphicsAccelerationMode>(makersMode.value_or(ownMode)));
    scale.store(scaleOf(makersScale.value_or(settings.retinaEnabled.value())));
}

void InterfaceDrawing::readMakerSettings(SettingSerializer& reader)
{
    makersMode = readNumber(reader, "GraphicsAcceleration");
    makersScale = readNumber(reader, "RetinaEnabled");
    if (makersScale)
        makersScale = std::clamp(*makersScale, 0, highestScale);
}
