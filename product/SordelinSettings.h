#pragma once

#include "core/PluginSettings.h"

/// What the product's editor remembers beyond the settings of every plug-in.
class SordelinSettings : public PluginSettings {
public:
    enum class InterfaceLayout : std::int32_t { Normal = 0, Wide = 1 };

    SordelinSettings(std::string settingsKey, const InterfaceLimits& interfaceLimits)
        : PluginSettings(std::move(settingsKey), interfaceLimits)
    {}

    void serialize(SettingSerializer& serializer) override;

    Property<int> expandedSection{-1, this};  // -1: none
    /// Stands beside the number of the layout that every plug-in keeps, under the same name, and goes before
    /// it.
    Property<InterfaceLayout> interfaceLayout{InterfaceLayout::Normal, this};
    Property<bool> showModulation{false, this};
};
