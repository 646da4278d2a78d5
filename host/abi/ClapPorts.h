#pragma once

#include "abi/ClapCore.h"

constexpr char CLAP_EXT_AUDIO_PORTS[] = "clap.audio-ports";
constexpr char CLAP_PORT_MONO[] = "mono";
constexpr char CLAP_PORT_STEREO[] = "stereo";
constexpr char CLAP_PORT_SURROUND[] = "surround";

enum {
    CLAP_AUDIO_PORT_IS_MAIN = 1 << 0,  // one at most in each direction, at index 0
    CLAP_AUDIO_PORT_SUPPORTS_64BITS = 1 << 1,
    CLAP_AUDIO_PORT_PREFERS_64BITS = 1 << 2,
    CLAP_AUDIO_PORT_REQUIRES_COMMON_SAMPLE_SIZE = 1 << 3,  // with all ports that have this bit
};

struct clap_audio_port_info {
    clap_id id;
    char name[CLAP_NAME_SIZE];
    uint32_t flags;
    uint32_t channel_count;
    const char* port_type;  // for instance CLAP_PORT_STEREO; null says nothing
    clap_id in_place_pair;  // port of the other direction that may share the buffer, or CLAP_INVALID_ID
};
using clap_audio_port_info_t = clap_audio_port_info;

/// Thread: main. The ports only change while the plug-in is deactivated.
struct clap_plugin_audio_ports {
    uint32_t(CLAP_ABI* count)(const clap_plugin_t* plugin, bool is_input);
    bool(CLAP_ABI* get)(const clap_plugin_t* plugin, uint32_t index, bool is_input,
                        clap_audio_port_info_t* info);
};
using clap_plugin_audio_ports_t = clap_plugin_audio_ports;

/// All but the names may only change while deactivated.
enum {
    CLAP_AUDIO_PORTS_RESCAN_NAMES = 1 << 0,
    CLAP_AUDIO_PORTS_RESCAN_FLAGS = 1 << 1,
    CLAP_AUDIO_PORTS_RESCAN_CHANNEL_COUNT = 1 << 2,
    CLAP_AUDIO_PORTS_RESCAN_PORT_TYPE = 1 << 3,
    CLAP_AUDIO_PORTS_RESCAN_IN_PLACE_PAIR = 1 << 4,
    CLAP_AUDIO_PORTS_RESCAN_LIST = 1 << 5,
};

/// Thread: main.
struct clap_host_audio_ports {
    bool(CLAP_ABI* is_rescan_flag_supported)(const clap_host_t* host, uint32_t flag);
    void(CLAP_ABI* rescan)(const clap_host_t* host, uint32_t flags);
};
using clap_host_audio_ports_t = clap_host_audio_ports;

constexpr char CLAP_EXT_AUDIO_PORTS_CONFIG[] = "clap.audio-ports-config";
constexpr char CLAP_EXT_AUDIO_PORTS_CONFIG_INFO[] = "clap.audio-ports-config-info/1";
constexpr char CLAP_EXT_AUDIO_PORTS_CONFIG_INFO_COMPAT[] = "clap.audio-ports-config-info/draft-0";

/// One of the port sets that a plug-in offers; the main fields sum up the main ports.
struct clap_audio_ports_config {
    clap_id id;
    char name[CLAP_NAME_SIZE];
    uint32_t input_port_count;
    uint32_t output_port_count;
    bool has_main_input;
    uint32_t main_input_channel_count;
    const char* main_input_port_type;
    bool has_main_output;
    uint32_t main_output_channel_count;
    const char* main_output_port_type;
};
using clap_audio_ports_config_t = clap_audio_ports_config;

/// Thread: main; select only while deactivated.
struct clap_plugin_audio_ports_config {
    uint32_t(CLAP_ABI* count)(const clap_plugin_t* plugin);
    bool(CLAP_ABI* get)(const clap_plugin_t* plugin, uint32_t index, clap_audio_ports_config_t* config);
    bool(CLAP_ABI* select)(const clap_plugin_t* plugin, clap_id config_id);
};
using clap_plugin_audio_ports_config_t = clap_plugin_audio_ports_config;

/// The ports of a config without selecting it. Thread: main.
struct clap_plugin_audio_ports_config_info {
    // CLAP_INVALID_ID if the ports belong to no config.
    clap_id(CLAP_ABI* current_config)(const clap_plugin_t* plugin);
    bool(CLAP_ABI* get)(const clap_plugin_t* plugin, clap_id config_id, uint32_t port_index, bool is_input,
                        clap_audio_port_info_t* info);
};
using clap_plugin_audio_ports_config_info_t = clap_plugin_audio_ports_config_info;

struct clap_host_audio_ports_config {
    // Thread: main. The list of configs has changed.
    void(CLAP_ABI* rescan)(const clap_host_t* host);
};
using clap_host_audio_ports_config_t = clap_host_audio_ports_config;

constexpr char CLAP_EXT_NOTE_PORTS[] = "clap.note-ports";

/// How notes are written on a port.
enum clap_note_dialect {
    CLAP_NOTE_DIALECT_CLAP = 1 << 0,  // clap_event_note and clap_event_note_expression
    CLAP_NOTE_DIALECT_MIDI = 1 << 1,
    CLAP_NOTE_DIALECT_MIDI_MPE = 1 << 2,
    CLAP_NOTE_DIALECT_MIDI2 = 1 << 3,
};

struct clap_note_port_info {
    clap_id id;
    uint32_t supported_dialects;  // bits
    uint32_t preferred_dialect;   // one of the bits
    char name[CLAP_NAME_SIZE];
};
using clap_note_port_info_t = clap_note_port_info;

/// Thread: main. The ports only change while the plug-in is deactivated.
struct clap_plugin_note_ports {
    uint32_t(CLAP_ABI* count)(const clap_plugin_t* plugin, bool is_input);
    bool(CLAP_ABI* get)(const clap_plugin_t* plugin, uint32_t index, bool is_input,
                        clap_note_port_info_t* info);
};
using clap_plugin_note_ports_t = clap_plugin_note_ports;

enum {
    CLAP_NOTE_PORTS_RESCAN_ALL = 1 << 0,  // only while deactivated
    CLAP_NOTE_PORTS_RESCAN_NAMES = 1 << 1,
};

/// Thread: main.
struct clap_host_note_ports {
    uint32_t(CLAP_ABI* supported_dialects)(const clap_host_t* host);
    void(CLAP_ABI* rescan)(const clap_host_t* host, uint32_t flags);
};
using clap_host_note_ports_t = clap_host_note_ports;
