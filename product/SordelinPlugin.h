#pragma once

#include "core/GenericPlugin.h"
#include "modulation/ModulationMatrixOwner.h"
#include "product/SordelinParameters.h"
#include "product/SordelinSettings.h"

/// The product's main-thread half.
class SordelinPlugin : public GenericPlugin, public ModulationMatrixOwner, public SordelinParameters {
public:
    using SordelinSettings = ::SordelinSettings;
    using InterfaceLayout = SordelinSettings::InterfaceLayout;

    SordelinPlugin();
    ~SordelinPlugin() override;

    SordelinSettings& sordelinSettings() { return static_cast<SordelinSettings&>(settings()); }

    // GenericPlugin

    VersionInfo version() const override;
    int interfaceLayoutCount() const override { return 2; }
    int interfaceMinimumHeight() const override { return modulationHeight; }
    int interfaceMinimumWidth() const override { return wideWidth; }
    int defaultInterfaceHeight() override;
    int defaultInterfaceWidth() override;

protected:
    std::unique_ptr<PluginSettings> createSettings() override;

private:
    // Logical units.
    static constexpr int plainHeight = 321;
    static constexpr int modulationHeight = 514;  // with the modulation panel
    static constexpr int normalWidth = 640;
    static constexpr int wideWidth = 926;
};
