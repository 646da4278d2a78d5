#pragma once

#include "abi/ClapBasics.h"
#include "abi/ClapFeatures.h"
#include "abi/ClapProcess.h"

/// What the plug-in sees of its host. Extensions asked for here live as long as the plug-in's instance.
struct clap_host {
    clap_version_t clap_version;
    void* host_data;     // the host's own
    const char* name;    // mandatory, as version is
    const char* vendor;  // may be null or empty, as url may
    const char* url;
    const char* version;

    // Thread: any. Null for an extension that the host doesn't have; not before clap_plugin.init.
    const void*(CLAP_ABI* get_extension)(const clap_host* host, const char* extension_id);
    // Thread: any. Asks for a deactivate and an activate.
    void(CLAP_ABI* request_restart)(const clap_host* host);
    // Thread: any. Asks for an activate and calls of process.
    void(CLAP_ABI* request_process)(const clap_host* host);
    // Thread: any. Asks for one call of clap_plugin.on_main_thread.
    void(CLAP_ABI* request_callback)(const clap_host* host);
};
using clap_host_t = clap_host;

/// What a host knows of a plug-in before it makes one. id and name are mandatory, other texts null or empty
/// at will.
struct clap_plugin_descriptor {
    clap_version_t clap_version;
    const char* id;  // host projects refer to the plug-in by it
    const char* name;
    const char* vendor;
    const char* url;
    const char* manual_url;
    const char* support_url;
    const char* version;
    const char* description;
    const char* const* features;  // ends with a null pointer
};
using clap_plugin_descriptor_t = clap_plugin_descriptor;

/// One instance of a plug-in. The audio calls of one instance never run at the same time as each other.
struct clap_plugin {
    const clap_plugin_descriptor_t* desc;
    void* plugin_data;  // the plug-in's own

    // Thread: main. Once, before all else; after false the host only calls destroy.
    bool(CLAP_ABI* init)(const clap_plugin* plugin);
    // Thread: main, deactivated.
    void(CLAP_ABI* destroy)(const clap_plugin* plugin);

    // Thread: main, deactivated. Every block will have min..max frames, with 1 <= min <= max <= 2^31 - 1.
    bool(CLAP_ABI* activate)(const clap_plugin* plugin, double sample_rate, uint32_t min_frames_count,
                             uint32_t max_frames_count);
    // Thread: main, active.
    void(CLAP_ABI* deactivate)(const clap_plugin* plugin);

    // Thread: audio, active. The same for the three that follow.
    bool(CLAP_ABI* start_processing)(const clap_plugin* plugin);
    void(CLAP_ABI* stop_processing)(const clap_plugin* plugin);
    // Clears all sound in flight; parameters stay. The next steady_time may be any.
    void(CLAP_ABI* reset)(const clap_plugin* plugin);
    // The records it is given are valid during the call only.
    clap_process_status(CLAP_ABI* process)(const clap_plugin* plugin, const clap_process_t* process);

    // Thread: any. Null for an extension that the plug-in doesn't have.
    const void*(CLAP_ABI* get_extension)(const clap_plugin* plugin, const char* id);
    // Thread: main. Answer to clap_host.request_callback.
    void(CLAP_ABI* on_main_thread)(const clap_plugin* plugin);
};
using clap_plugin_t = clap_plugin;

/// The record behind the module's one exported symbol. init and deinit may be called several times, in pairs.
struct clap_plugin_entry {
    clap_version_t clap_version;

    // Path of the module's file, UTF-8. Must be quick: hosts call it when they scan.
    bool(CLAP_ABI* init)(const char* plugin_path);
    void(CLAP_ABI* deinit)();
    // Null for a factory that the module doesn't have.
    const void*(CLAP_ABI* get_factory)(const char* factory_id);
};
using clap_plugin_entry_t = clap_plugin_entry;

extern "C" {
CLAP_EXPORT extern const clap_plugin_entry_t clap_entry;
}
