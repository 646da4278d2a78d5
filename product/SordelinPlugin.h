#pragma once

#include "core/GenericPlugin.h"
#include "modulation/ModulationMatrixOwner.h"
#include "product/SordelinInfo.h"
#include "product/SordelinModulationIds.h"
#include "product/SordelinParameters.h"
#include "product/SordelinSettings.h"

#include <array>

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
    int presetFormatVersion() const override { return 5; }

    void readDisplayData(BinaryDataReader& reader) override;
    /// How far a target's slots have moved it, in units of its scale. Thread: main.
    float shownDistance(int target) const { return displayValues[static_cast<std::size_t>(target)]; }
    /// Where a source stands, as 0..1. Thread: main.
    float shownSource(int source) const
    {
        return displayValues[static_cast<std::size_t>(SordelinTargets::count + source)];
    }

protected:
    /// Also takes the presets of the major version before this one.
    void initialiseProcessWideData() override;
    std::unique_ptr<CustomPresetLoader> createPresetLoader() override;
    /// Reads presets of every version. "Delay Freeze" stays as it is, so that no preset stops a frozen delay,
    /// and so does "Dry Enabled", which belongs to the place in the song rather than to the sound; the
    /// default preset alone may set it.
    void loadPresetFile(ErrorResult& result, const PresetInfo& preset) override;
    std::unique_ptr<PluginSettings> createSettings() override;

private:
    std::array<float, SordelinTargets::count + SordelinSources::count> displayValues{};  // targets first

    // Logical units.
    static constexpr int plainHeight = 321;
    static constexpr int modulationHeight = 514;  // with the modulation panel
    static constexpr int normalWidth = 640;
    static constexpr int wideWidth = 926;
};
