#pragma once

#include "abi/Clap.h"
#include "core/GenericPluginInfo.h"

#include <set>
#include <string>

/// Tells a host where presets lie and what each of them says about itself, without an instance of the
/// plug-in: it reads settings and single files, and shares nothing with live instances. The host walks the
/// folder. Thread: any, one at a time.
class ClapPresetDiscovery {
public:
    /// The host destroys it through the record. @param indexer, descriptor  outlive it
    static const clap_preset_discovery_provider_t*
    create(const clap_preset_discovery_indexer_t& indexer,
           const clap_preset_discovery_provider_descriptor_t& descriptor, const char* pluginId);

private:
    ClapPresetDiscovery(const clap_preset_discovery_indexer_t& hostIndexer,
                        const clap_preset_discovery_provider_descriptor_t& descriptor, const char* id);

    static ClapPresetDiscovery* of(const clap_preset_discovery_provider_t* record);
    bool init();
    bool declare() const;
    bool getMetadata(std::uint32_t kind, const char* location,
                     const clap_preset_discovery_metadata_receiver_t& receiver) const;

    clap_preset_discovery_provider_t provider;  // what the host holds
    const GenericPluginInfo pluginInfo;
    const clap_preset_discovery_indexer_t* const indexer;
    const std::string pluginId;
    std::string presetFolder;         // the user's
    std::set<std::string> favorites;  // full paths
};
