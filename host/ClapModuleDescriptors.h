#pragma once

#include "abi/Clap.h"

#include <string>
#include <vector>

/// The descriptor record that hosts see, and the texts it points to. It lives from the first `init` to the
/// last `deinit`, and doesn't change meanwhile.
class ClapModuleDescriptors {
public:
    ClapModuleDescriptors();
    ClapModuleDescriptors(const ClapModuleDescriptors&) = delete;
    ClapModuleDescriptors& operator=(const ClapModuleDescriptors&) = delete;

    const clap_plugin_descriptor_t& plugin() const { return descriptor; }

private:
    std::string pluginName;
    std::string versionText;
    std::string pluginId;
    std::string manualUrl;
    std::string supportUrl;
    std::vector<const char*> features;
    clap_plugin_descriptor_t descriptor{};
};
