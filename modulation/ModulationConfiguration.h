#pragma once

#include "foundation/Realtime.h"

#include <utility>
#include <vector>

/// Something that modulates.
struct ModulationSource {
    enum Kind { Unset = -1, XY, XLFO, EG, EF, Midi, SnappedXLFO };

    Kind kind = Unset;            // an XLFO's changes with its Snap switch
    std::vector<int> ownTargets;  // ids of the targets that are parameters of the source itself
};

/// The signals of a target, and how deep a slot reaches on it. A depth is the change of the signal for a
/// source value of 1 at a slot level of 1.
struct ModulationRange {
    float lower = 0.0f;
    float upper = 1.0f;
    float depth = 1.0f;  // for a source of any kind not in `kindDepths`
    std::vector<std::pair<ModulationSource::Kind, float>> kindDepths;
    float span = 0.0f;        // what a step of the target's ramp is measured against; 0 means upper - lower
    float wrapPeriod = 0.0f;  // above 0 the target is circular

    float depthFor(ModulationSource::Kind kind) const noexcept REALTIME
    {
        for (const auto& [known, kindDepth] : kindDepths)
            if (known == kind)
                return kindDepth;
        return depth;
    }
};

/// What a product offers to its modulation matrix. Filled once, when the parameter tree is initialised; sizes
/// and ranges stay.
struct ModulationConfiguration {
    int firstSlotTarget = 0;  // the target id of the first slot's level; the other slots follow
    int slotCount = 0;
    std::vector<ModulationSource> sources;  // by source id
    std::vector<ModulationRange> ranges;
    std::vector<int> targetRanges;  // by target id: an index into `ranges`

    int targetCount() const noexcept { return static_cast<int>(targetRanges.size()); }
    const ModulationRange& rangeOf(int target) const noexcept
    {
        return ranges[static_cast<std::size_t>(targetRanges[static_cast<std::size_t>(target)])];
    }
};
