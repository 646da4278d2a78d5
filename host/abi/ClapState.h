#pragma once

#include "abi/ClapCore.h"

/// A stream that the host reads for the plug-in.
struct clap_istream {
    void* ctx;
    // Bytes read, often fewer than asked for; 0 at the end, -1 on an error.
    int64_t(CLAP_ABI* read)(const clap_istream* stream, void* buffer, uint64_t size);
};
using clap_istream_t = clap_istream;

/// A stream that the host writes for the plug-in.
struct clap_ostream {
    void* ctx;
    // Bytes written, often fewer than given; -1 on an error.
    int64_t(CLAP_ABI* write)(const clap_ostream* stream, const void* buffer, uint64_t size);
};
using clap_ostream_t = clap_ostream;

constexpr char CLAP_EXT_STATE[] = "clap.state";

/// What a host's project stores of the plug-in. Thread: main.
struct clap_plugin_state {
    bool(CLAP_ABI* save)(const clap_plugin_t* plugin, const clap_ostream_t* stream);
    bool(CLAP_ABI* load)(const clap_plugin_t* plugin, const clap_istream_t* stream);
};
using clap_plugin_state_t = clap_plugin_state;

struct clap_host_state {
    // Thread: main. Something other than a parameter's value has changed.
    void(CLAP_ABI* mark_dirty)(const clap_host_t* host);
};
using clap_host_state_t = clap_host_state;

constexpr char CLAP_EXT_PRESET_LOAD[] = "clap.preset-load/2";
constexpr char CLAP_EXT_PRESET_LOAD_COMPAT[] = "clap.preset-load.draft/2";

/// Loads what preset discovery has found; kind, location and load key are those of the discovery. Thread:
/// main.
struct clap_plugin_preset_load {
    bool(CLAP_ABI* from_location)(const clap_plugin_t* plugin, uint32_t location_kind, const char* location,
                                  const char* load_key);
};
using clap_plugin_preset_load_t = clap_plugin_preset_load;

/// Thread: main.
struct clap_host_preset_load {
    // os_error is the system's number, 0 if there is none.
    void(CLAP_ABI* on_error)(const clap_host_t* host, uint32_t location_kind, const char* location,
                             const char* load_key, int32_t os_error, const char* msg);
    // Keeps the host's browser in step, whoever loaded the preset.
    void(CLAP_ABI* loaded)(const clap_host_t* host, uint32_t location_kind, const char* location,
                           const char* load_key);
};
using clap_host_preset_load_t = clap_host_preset_load;
