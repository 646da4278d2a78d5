#include "host/ClapEntry.h"

#include "host/ClapModuleDescriptors.h"
#include "host/ClapPluginAdapter.h"

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

const void* CLAP_ABI getFactory(const char* id)
{
    return id && std::strcmp(id, CLAP_PLUGIN_FACTORY_ID) == 0 ? &pluginFactory : nullptr;
}

}  // namespace

extern "C" CLAP_EXPORT const clap_plugin_entry_t clap_entry = {
    {1, 2, 5},
    initModule,
    deinitModule,
    getFactory,
};
