#include "host/ClapEntry.h"

#include "host/ClapModuleDescriptors.h"
#include "host/ClapPluginAdapter.h"
#include "host/ClapPresetDiscovery.h"

#include <dlfcn.h>

#include <cstring>
#include <memory>
#include <mutex>

namespace {

// Counted: made by the first `init`, gone with the last `deinit`. Nothing of it runs when the module is
// loaded or unloaded.
constinit std::mutex moduleLock;
constinit unsigned initCount = 0;
constinit ClapModuleDescriptors* descriptors = nullptr;

/// True if `path` is a module that is loaded in this process.
bool isLoadedModule(const char* path)
{
    void* module = path ? dlopen(path, RTLD_LAZY | RTLD_NOLOAD) : nullptr;
    if (!module)
        return false;
    dlclose(module);  // gives back the count that the look-up took
    return true;
}

bool CLAP_ABI initModule(const char* path)
{
    const std::lock_guard lock(moduleLock);
    if (++initCount > 1)
        return true;
    if (!isLoadedModule(path)) {
        initCount = 0;
        return false;
    }
    descriptors = new ClapModuleDescriptors;
    return true;
}

void CLAP_ABI deinitModule()
{
    const std::lock_guard lock(moduleLock);
    if (initCount == 0 || --initCount != 0)
        return;
    delete descriptors;
    descriptors = nullptr;
}

uint32_t CLAP_ABI pluginCount(const clap_plugin_factory_t*) { return 1; }

const clap_plugin_descriptor_t* CLAP_ABI pluginDescriptor(const clap_plugin_factory_t*, uint32_t index)
{
    return index == 0 && descriptors ? &descriptors->plugin() : nullptr;
}

const clap_plugin_t* CLAP_ABI createPlugin(const clap_plugin_factory_t*, const clap_host_t* host,
                                           const char* id)
{
    if (!descriptors || !host || !id || !clap_version_is_compatible(host->clap_version))
        return nullptr;
    if (std::strcmp(id, descriptors->plugin().id) != 0)
        return nullptr;
    return ClapPluginAdapter::create(*host, descriptors->plugin());
}

constexpr clap_plugin_factory_t pluginFactory{pluginCount, pluginDescriptor, createPlugin};

uint32_t CLAP_ABI providerCount(const clap_preset_discovery_factory_t*) { return 1; }

const clap_preset_discovery_provider_descriptor_t* CLAP_ABI
providerDescriptor(const clap_preset_discovery_factory_t*, uint32_t index)
{
    return index == 0 && descriptors ? &descriptors->presetProvider() : nullptr;
}

/// There is one provider, whatever it is called.
const clap_preset_discovery_provider_t* CLAP_ABI createProvider(
    const clap_preset_discovery_factory_t*, const clap_preset_discovery_indexer_t* indexer, const char*)
{
    if (!descriptors || !indexer)
        return nullptr;
    return ClapPresetDiscovery::create(*indexer, descriptors->presetProvider(), descriptors->plugin().id);
}

constexpr clap_preset_discovery_factory_t discoveryFactory{providerCount, providerDescriptor, createProvider};

const void* CLAP_ABI getFactory(const char* id)
{
    const auto isId = [id](const char* known) { return id && std::strcmp(id, known) == 0; };
    if (isId(CLAP_PLUGIN_FACTORY_ID))
        return &pluginFactory;
    // Hosts of the time when it was a draft ask by the older id.
    if (isId(CLAP_PRESET_DISCOVERY_FACTORY_ID) || isId(CLAP_PRESET_DISCOVERY_FACTORY_ID_COMPAT))
        return &discoveryFactory;
    return nullptr;
}

}  // namespace

extern "C" CLAP_EXPORT const clap_plugin_entry_t clap_entry = {
    {1, 2, 5},
    initModule,
    deinitModule,
    getFactory,
};
