#pragma once

#include "abi/ClapCore.h"

constexpr char CLAP_PLUGIN_FACTORY_ID[] = "clap.plugin-factory";

/// Makes the plug-ins of a module. Every function may be called from any thread.
struct clap_plugin_factory {
    uint32_t(CLAP_ABI* get_plugin_count)(const clap_plugin_factory* factory);
    // Null past the end; valid until the module's deinit.
    const clap_plugin_descriptor_t*(CLAP_ABI* get_plugin_descriptor)(const clap_plugin_factory* factory,
                                                                     uint32_t index);
    // Null for an unknown id. The plug-in must not call the host before its init.
    const clap_plugin_t*(CLAP_ABI* create_plugin)(const clap_plugin_factory* factory, const clap_host_t* host,
                                                  const char* plugin_id);
};
using clap_plugin_factory_t = clap_plugin_factory;
