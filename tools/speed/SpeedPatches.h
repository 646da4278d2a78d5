#pragma once

#include "speed/PluginSubject.h"

#include <string>
#include <vector>

/// A patch of the plug-in that is measured.
struct SpeedPatch {
    std::string name;
    SpeedSettings settings;
    SpeedSettings later = {};  // once the delay lines are filled
};

/// From the default on to what costs most.
std::vector<SpeedPatch> speedPatches();

/// `count` of 24 slots in use, from XY controllers at rest. Filters off.
SpeedSettings slotsInUse(int count);
/// `count` of 24 sources of all moving kinds, each in a slot of its own. Filters off.
SpeedSettings sourcesInUse(int count);
SpeedSettings withoutFilters();
