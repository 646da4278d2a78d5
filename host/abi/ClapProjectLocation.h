#pragma once

#include "abi/ClapCore.h"

constexpr char CLAP_EXT_TRACK_INFO[] = "clap.track-info/1";
constexpr char CLAP_EXT_TRACK_INFO_COMPAT[] = "clap.track-info.draft/1";

/// The HAS bits say which fields hold something.
enum {
    CLAP_TRACK_INFO_HAS_TRACK_NAME = 1 << 0,
    CLAP_TRACK_INFO_HAS_TRACK_COLOR = 1 << 1,
    CLAP_TRACK_INFO_HAS_AUDIO_CHANNEL = 1 << 2,
    CLAP_TRACK_INFO_IS_FOR_RETURN_TRACK = 1 << 3,
    CLAP_TRACK_INFO_IS_FOR_BUS = 1 << 4,
    CLAP_TRACK_INFO_IS_FOR_MASTER = 1 << 5,
};

struct clap_track_info {
    uint64_t flags;
    char name[CLAP_NAME_SIZE];
    clap_color_t color;
    int32_t audio_channel_count;
    const char* audio_port_type;
};
using clap_track_info_t = clap_track_info;

/// Thread: main.
struct clap_plugin_track_info {
    void(CLAP_ABI* changed)(const clap_plugin_t* plugin);
};
using clap_plugin_track_info_t = clap_plugin_track_info;

/// Thread: main.
struct clap_host_track_info {
    bool(CLAP_ABI* get)(const clap_host_t* host, clap_track_info_t* info);
};
using clap_host_track_info_t = clap_host_track_info;

constexpr char CLAP_EXT_PROJECT_LOCATION[] = "clap.project-location/2";

enum clap_project_location_kind {
    CLAP_PROJECT_LOCATION_PROJECT = 1,
    CLAP_PROJECT_LOCATION_TRACK_GROUP = 2,
    CLAP_PROJECT_LOCATION_TRACK = 3,
    CLAP_PROJECT_LOCATION_DEVICE = 4,
    CLAP_PROJECT_LOCATION_NESTED_DEVICE_CHAIN = 5,
};

enum clap_project_location_track_kind {
    CLAP_PROJECT_LOCATION_INSTUMENT_TRACK = 1,  // spelt so in the format
    CLAP_PROJECT_LOCATION_AUDIO_TRACK = 2,
    CLAP_PROJECT_LOCATION_HYBRID_TRACK = 3,
    CLAP_PROJECT_LOCATION_RETURN_TRACK = 4,
    CLAP_PROJECT_LOCATION_MASTER_TRACK = 5,
};

enum clap_project_location_flags {
    CLAP_PROJECT_LOCATION_HAS_INDEX = 1 << 0,
    CLAP_PROJECT_LOCATION_HAS_COLOR = 1 << 1,
};

/// One step on the way from the project down to the plug-in.
struct clap_project_location_element {
    uint64_t flags;
    uint32_t kind;        // clap_project_location_kind
    uint32_t track_kind;  // for tracks only
    uint32_t index;       // in the parent
    char id[CLAP_PATH_SIZE];
    char name[CLAP_NAME_SIZE];
    clap_color_t color;
};
using clap_project_location_element_t = clap_project_location_element;

struct clap_plugin_project_location {
    // Thread: main. The path starts with the project and ends with the plug-in itself.
    void(CLAP_ABI* set)(const clap_plugin_t* plugin, const clap_project_location_element_t* path,
                        uint32_t num_elements);
};
using clap_plugin_project_location_t = clap_plugin_project_location;
