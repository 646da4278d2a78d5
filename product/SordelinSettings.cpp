#include "product/SordelinSettings.h"

#include "core/SettingSerializer.h"

#include <algorithm>

void SordelinSettings::serialize(SettingSerializer& serializer)
{
    PluginSettings::serialize(serializer);
    expandedSection.assign(
        serializer.intValue("ExpandedSection", expandedSection.value(), expandedSection.value()));
    const auto layout = static_cast<int>(interfaceLayout.value());
    interfaceLayout.assign(static_cast<InterfaceLayout>(
        std::clamp(serializer.intValue("InterfaceLayout", layout, layout), 0, 1)));
    showModulation.assign(
        serializer.boolValue("ShowModulation", showModulation.value(), showModulation.value()));
}
