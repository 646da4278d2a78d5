#include "core/SharedSettings.h"

#include "core/SettingSerializer.h"

void SharedSettings::serialize(SettingSerializer& serializer)
{
    const auto exchange = [&serializer](const char* key, Property<bool>& property) {
        property.assign(serializer.boolValue(key, property.value(), property.value()));
    };
    exchange("EnableMIDIProgramChanges", enableMIDIProgramChanges);
    const auto mode = static_cast<std::int32_t>(graphicsAcceleration.value());
    graphicsAcceleration.assign(
        static_cast<GraphicsAccelerationMode>(serializer.intValue("GraphicsAcceleration", mode, mode)));
    retinaEnabled.assign(serializer.intValue("RetinaEnabled", retinaEnabled.value(), retinaEnabled.value()));
    exchange("showInteractiveHelp", showInteractiveHelp);
    exchange("showWelcomeHint", showWelcomeHint);
    exchange("ShowComponentDisplays", showComponentDisplays);
    exchange("PresetBrowserTypeToSearch", presetBrowserTypeToSearch);
}

void SharedSettings::propertyChanged(AbstractProperty& property)
{
    programChanges.store(enableMIDIProgramChanges.value(), std::memory_order_relaxed);
    SettingsBase::propertyChanged(property);
}
