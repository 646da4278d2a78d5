#pragma once

#include "abi/ClapBasics.h"

// Lets a host list presets without an instance of the plug-in: a provider declares file types and locations
// to the host's indexer, the host walks the locations and asks the provider for the metadata of each file.
constexpr char CLAP_PRESET_DISCOVERY_FACTORY_ID[] = "clap.preset-discovery-factory/2";
constexpr char CLAP_PRESET_DISCOVERY_FACTORY_ID_COMPAT[] = "clap.preset-discovery-factory/draft-2";

enum clap_preset_discovery_location_kind {
    CLAP_PRESET_DISCOVERY_LOCATION_FILE = 0,    // location is an absolute path
    CLAP_PRESET_DISCOVERY_LOCATION_PLUGIN = 1,  // inside the module; location is null
};

enum clap_preset_discovery_flags {
    CLAP_PRESET_DISCOVERY_IS_FACTORY_CONTENT = 1 << 0,
    CLAP_PRESET_DISCOVERY_IS_USER_CONTENT = 1 << 1,
    CLAP_PRESET_DISCOVERY_IS_DEMO_CONTENT = 1 << 2,
    CLAP_PRESET_DISCOVERY_IS_FAVORITE = 1 << 3,
};

/// The host's sink for what a file says about its presets. All calls come from within get_metadata; those
/// after a begin_preset belong to that preset. Texts are copied.
struct clap_preset_discovery_metadata_receiver {
    void* receiver_data;  // the host's own

    void(CLAP_ABI* on_error)(const clap_preset_discovery_metadata_receiver* receiver, int32_t os_error,
                             const char* error_message);
    // load_key tells presets of one container file apart. After false the provider stops.
    bool(CLAP_ABI* begin_preset)(const clap_preset_discovery_metadata_receiver* receiver, const char* name,
                                 const char* load_key);
    void(CLAP_ABI* add_plugin_id)(const clap_preset_discovery_metadata_receiver* receiver,
                                  const clap_universal_plugin_id_t* plugin_id);
    void(CLAP_ABI* set_soundpack_id)(const clap_preset_discovery_metadata_receiver* receiver,
                                     const char* soundpack_id);
    // clap_preset_discovery_flags; without a call those of the location hold.
    void(CLAP_ABI* set_flags)(const clap_preset_discovery_metadata_receiver* receiver, uint32_t flags);
    void(CLAP_ABI* add_creator)(const clap_preset_discovery_metadata_receiver* receiver, const char* creator);
    void(CLAP_ABI* set_description)(const clap_preset_discovery_metadata_receiver* receiver,
                                    const char* description);
    void(CLAP_ABI* set_timestamps)(const clap_preset_discovery_metadata_receiver* receiver,
                                   clap_timestamp creation_time, clap_timestamp modification_time);
    void(CLAP_ABI* add_feature)(const clap_preset_discovery_metadata_receiver* receiver, const char* feature);
    void(CLAP_ABI* add_extra_info)(const clap_preset_discovery_metadata_receiver* receiver, const char* key,
                                   const char* value);
};
using clap_preset_discovery_metadata_receiver_t = clap_preset_discovery_metadata_receiver;

struct clap_preset_discovery_filetype {
    const char* name;
    const char* description;     // may be null
    const char* file_extension;  // without the dot; null or empty matches every file
};
using clap_preset_discovery_filetype_t = clap_preset_discovery_filetype;

struct clap_preset_discovery_location {
    uint32_t flags;  // clap_preset_discovery_flags
    const char* name;
    uint32_t kind;         // clap_preset_discovery_location_kind
    const char* location;  // a file or a folder
};
using clap_preset_discovery_location_t = clap_preset_discovery_location;

struct clap_preset_discovery_soundpack {
    uint32_t flags;  // clap_preset_discovery_flags
    const char* id;
    const char* name;
    const char* description;  // may be null, as the three that follow
    const char* homepage_url;
    const char* vendor;
    const char* image_path;
    clap_timestamp release_timestamp;
};
using clap_preset_discovery_soundpack_t = clap_preset_discovery_soundpack;

struct clap_preset_discovery_provider_descriptor {
    clap_version_t clap_version;
    const char* id;
    const char* name;
    const char* vendor;  // may be null
};
using clap_preset_discovery_provider_descriptor_t = clap_preset_discovery_provider_descriptor;

/// The module's side. It may run on any thread, but on one at a time.
struct clap_preset_discovery_provider {
    const clap_preset_discovery_provider_descriptor_t* desc;
    void* provider_data;  // the module's own

    // Makes all declarations to the indexer.
    bool(CLAP_ABI* init)(const clap_preset_discovery_provider* provider);
    void(CLAP_ABI* destroy)(const clap_preset_discovery_provider* provider);
    // Reads one file; opens no window.
    bool(CLAP_ABI* get_metadata)(const clap_preset_discovery_provider* provider, uint32_t location_kind,
                                 const char* location,
                                 const clap_preset_discovery_metadata_receiver_t* metadata_receiver);
    const void*(CLAP_ABI* get_extension)(const clap_preset_discovery_provider* provider,
                                         const char* extension_id);
};
using clap_preset_discovery_provider_t = clap_preset_discovery_provider;

/// The host's side. The declarations are taken during the provider's init only.
struct clap_preset_discovery_indexer {
    clap_version_t clap_version;
    const char* name;
    const char* vendor;  // may be null, as the two that follow
    const char* url;
    const char* version;
    void* indexer_data;  // the host's own

    bool(CLAP_ABI* declare_filetype)(const clap_preset_discovery_indexer* indexer,
                                     const clap_preset_discovery_filetype_t* filetype);
    bool(CLAP_ABI* declare_location)(const clap_preset_discovery_indexer* indexer,
                                     const clap_preset_discovery_location_t* location);
    bool(CLAP_ABI* declare_soundpack)(const clap_preset_discovery_indexer* indexer,
                                      const clap_preset_discovery_soundpack_t* soundpack);
    const void*(CLAP_ABI* get_extension)(const clap_preset_discovery_indexer* indexer,
                                         const char* extension_id);
};
using clap_preset_discovery_indexer_t = clap_preset_discovery_indexer;

/// Makes the providers of a module. Every function may be called from any thread.
struct clap_preset_discovery_factory {
    uint32_t(CLAP_ABI* count)(const clap_preset_discovery_factory* factory);
    // Null past the end; valid until the module's deinit.
    const clap_preset_discovery_provider_descriptor_t*(CLAP_ABI* get_descriptor)(
        const clap_preset_discovery_factory* factory, uint32_t index);
    // The indexer outlives the provider.
    const clap_preset_discovery_provider_t*(CLAP_ABI* create)(const clap_preset_discovery_factory* factory,
                                                              const clap_preset_discovery_indexer_t* indexer,
                                                              const char* provider_id);
};
using clap_preset_discovery_factory_t = clap_preset_discovery_factory;
