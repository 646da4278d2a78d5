#pragma once

#include "core/SettingsBase.h"

/// What a product's interface allows its settings to be.
struct InterfaceLimits {
    bool canResize = false;
    bool hostScales = true;  // so that nobody adjusts the scale of a monitor
    int layoutCount = 0;     // sizes and arrangements, by number
    int panelCount = 0;      // that open and close
    int minimumWidth = 0;    // logical units, as the height
    int minimumHeight = 0;
};

/// The settings of one instance. All instances of a product store them in one place, so that the next one
/// opens as the last one was left.
class PluginSettings : public SettingsBase {
public:
    PluginSettings(std::string settingsKey, const InterfaceLimits& interfaceLimits);

    void serialize(SettingSerializer& serializer) override;

    LimitedProperty<int> interfaceLayout;  // -1: a free size
    LimitedProperty<int> interfaceHeight;  // logical units
    LimitedProperty<int> interfacePanels;  // one bit for each open panel
    LimitedProperty<int> interfaceWidth;   // logical units
    Property<std::string> scalingAdjustments{{}, this};

private:
    const InterfaceLimits limits;
};
