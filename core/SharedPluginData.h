#pragma once

#include "core/ControllerMapping.h"
#include "core/GenericPluginInstanceList.h"
#include "core/InterfaceDrawing.h"
#include "core/SharedSettings.h"
#include "presets/PresetCache.h"
#include "presets/PresetManager.h"

#include <memory>
#include <mutex>
#include <vector>

/// What all plug-ins of one process share. It is made with the first of them and goes with the last.
class SharedPluginData {
public:
    /// Held while instances join and leave. It isn't recursive.
    static std::mutex& lock() noexcept;

    /// Counts one instance, with the lock held. @param first  set if the data has been made for it
    static SharedPluginData& join(bool& first);
    /// Counts one instance less, with the lock held.
    static void leave();

    ControllerMapping controllerMapping;
    GenericPluginInstanceList instances;
    std::unique_ptr<SharedSettings> settings;
    InterfaceDrawing drawing;
    std::unique_ptr<PresetCache> presetCache;  // only for a product that wants one; outlives the managers
    std::unique_ptr<PresetManager> presetManager;
    std::vector<std::unique_ptr<PresetManager>> componentManagers;  // one for each group of section presets
};
