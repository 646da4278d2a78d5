#include "core/PluginSettings.h"

#include "core/SettingSerializer.h"

#include <algorithm>

namespace {

constexpr int greatestHeight = 12000;  // logical units
constexpr int greatestWidth = 16000;

int lowestLayout(const InterfaceLimits& limits) { return limits.canResize ? -1 : 0; }

int highestLayout(const InterfaceLimits& limits)
{
    return std::max(limits.layoutCount - 1, lowestLayout(limits));
}

}  // namespace

PluginSettings::PluginSettings(std::string settingsKey, const InterfaceLimits& interfaceLimits)
    : SettingsBase(std::move(settingsKey)),
      interfaceLayout(-1, lowestLayout(interfaceLimits), highestLayout(interfaceLimits), this),
      interfaceHeight(0, interfaceLimits.minimumHeight, greatestHeight, this),
      interfacePanels(0, 0, 1 << interfaceLimits.panelCount, this),
      interfaceWidth(0, interfaceLimits.minimumWidth, greatestWidth, this),
      limits(interfaceLimits)
{}

void PluginSettings::serialize(SettingSerializer& serializer)
{
    const auto exchange = [&serializer](const char* key, Property<int>& property) {
        property.assign(serializer.intValue(key, property.value(), property.value()));
    };
    if (limits.layoutCount >= 2 || limits.canResize)
        exchange("InterfaceLayout", interfaceLayout);
    if (limits.panelCount > 0)
        exchange("InterfacePanels", interfacePanels);
    if (limits.canResize) {
        exchange("InterfaceWidth", interfaceWidth);
        exchange("InterfaceHeight", interfaceHeight);
    }
    if (!limits.hostScales) {
        const std::string& present = scalingAdjustments.value();
        scalingAdjustments.assign(serializer.stringValue("ScalingAdjustments", present, present));
    }
}
