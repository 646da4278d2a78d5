#pragma once

#include "core/GenericPlugin.h"
#include "modulation/ModulationMatrixOwner.h"
#include "product/SordelinInfo.h"
#include "product/SordelinModulationIds.h"
#include "product/SordelinParameters.h"

#include <array>

/// The product's main-thread half.
class SordelinPlugin : public GenericPlugin, public ModulationMatrixOwner, public SordelinParameters {
public:
    SordelinPlugin();

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
    VersionInfo version() const override { return sordelinVersion(); }
    /// Also takes the presets of the major version before this one.
    void initialiseProcessWideData() override;
    std::unique_ptr<CustomPresetLoader> createPresetLoader() override;
    /// Reads presets of every version. "Delay Freeze" stays as it is, so that no preset stops a frozen delay,
    /// and so does "Dry Enabled", which belongs to the place in the song rather than to the sound; the
    /// default preset alone may set it.
    void loadPresetFile(ErrorResult& result, const PresetInfo& preset) override;

private:
    std::array<float, SordelinTargets::count + SordelinSources::count> displayValues{};  // targets first
};
