#pragma once

#include "abi/Clap.h"

#include <string>
#include <vector>

/// The descriptor records that hosts see, and the texts they point to. It lives from the first `init` to the
/// last `deinit`, and doesn't change meanwhile.
class ClapModuleDescriptors {
public:
    ClapModuleDescriptors();
    ClapModuleDescriptors(const ClapModuleDescriptors&) = delete;
    ClapModuleDescriptors& operator=(const ClapModuleDescriptors&) = delete;

    const clap_plugin_descriptor_t& plugin() const { return descriptor; }
    const clap_preset_discovery_provider_descriptor_t& presetProvider() const { return providerDescriptor; }

private:
    std::string pluginName;
    std::string versionText;
    std::string pluginId;
    std::string providerId;
    std::string providerName;
    std::string manualUrl;
    std::string supportUrl;
    std::vector<const char*> features;
    clap_plugin_descriptor_t descriptor{};
    clap_preset_discovery_provider_descriptor_t providerDescriptor{};
};
