#pragma once

#include "core/GenericPlugin.h"
#include "modulation/ModulationMatrixOwner.h"
#include "product/SordelinModulationIds.h"
#include "product/SordelinParameters.h"

#include <array>

/// The product's main-thread half.
class SordelinPlugin : public GenericPlugin, public ModulationMatrixOwner, public SordelinParameters {
public:
    SordelinPlugin();

    void readDisplayData(BinaryDataReader& reader) override;
    /// How far a target's slots have moved it, in units of its scale. Thread: main.
    float shownDistance(int target) const { return displayValues[static_cast<std::size_t>(target)]; }
    /// Where a source stands, as 0..1. Thread: main.
    float shownSource(int source) const
    {
        return displayValues[static_cast<std::size_t>(SordelinTargets::count + source)];
    }

private:
    std::array<float, SordelinTargets::count + SordelinSources::count> displayValues{};  // targets first
};
