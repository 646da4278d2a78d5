#pragma once

#include "abi/ClapBasics.h"

/// First member of every event. Events of a space that one doesn't know are skipped.
struct clap_event_header {
    uint32_t size;  // bytes, this header included
    uint32_t time;  // frames from the start of the block
    uint16_t space_id;
    uint16_t type;
    uint32_t flags;
};
using clap_event_header_t = clap_event_header;

constexpr uint16_t CLAP_CORE_EVENT_SPACE_ID = 0;

enum clap_event_flags {
    CLAP_EVENT_IS_LIVE = 1 << 0,      // a person acts now, it isn't played back
    CLAP_EVENT_DONT_RECORD = 1 << 1,  // the cause is recorded already, for instance as MIDI
};

/// Event types of the core space.
enum {
    CLAP_EVENT_NOTE_ON = 0,
    CLAP_EVENT_NOTE_OFF = 1,
    CLAP_EVENT_NOTE_CHOKE = 2,  // stop the voice at once
    CLAP_EVENT_NOTE_END = 3,    // plug-in to host: the voice has gone silent
    CLAP_EVENT_NOTE_EXPRESSION = 4,
    CLAP_EVENT_PARAM_VALUE = 5,
    CLAP_EVENT_PARAM_MOD = 6,
    CLAP_EVENT_PARAM_GESTURE_BEGIN = 7,
    CLAP_EVENT_PARAM_GESTURE_END = 8,
    CLAP_EVENT_TRANSPORT = 9,
    CLAP_EVENT_MIDI = 10,
    CLAP_EVENT_MIDI_SYSEX = 11,
    CLAP_EVENT_MIDI2 = 12,
};

/// For the four note types. -1 in note_id, port_index, channel or key stands for "any".
struct clap_event_note {
    clap_event_header_t header;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;  // 0..15
    int16_t key;      // 0..127, 60 is the middle C
    double velocity;  // 0..1
};
using clap_event_note_t = clap_event_note;

enum {
    CLAP_NOTE_EXPRESSION_VOLUME = 0,  // gain, above 0 up to 4
    CLAP_NOTE_EXPRESSION_PAN = 1,     // 0 is left, 1 is right
    CLAP_NOTE_EXPRESSION_TUNING = 2,  // semitones, -120..120
    CLAP_NOTE_EXPRESSION_VIBRATO = 3,
    CLAP_NOTE_EXPRESSION_EXPRESSION = 4,
    CLAP_NOTE_EXPRESSION_BRIGHTNESS = 5,
    CLAP_NOTE_EXPRESSION_PRESSURE = 6,
};
using clap_note_expression = int32_t;

struct clap_event_note_expression {
    clap_event_header_t header;
    clap_note_expression expression_id;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;
    int16_t key;
    double value;
};
using clap_event_note_expression_t = clap_event_note_expression;

/// For CLAP_EVENT_PARAM_VALUE. A note address of -1 in all four parts means the whole plug-in.
struct clap_event_param_value {
    clap_event_header_t header;
    clap_id param_id;
    void* cookie;  // of clap_param_info, or null
    int32_t note_id;
    int16_t port_index;
    int16_t channel;
    int16_t key;
    double value;  // between the parameter's minimum and maximum
};
using clap_event_param_value_t = clap_event_param_value;

/// For CLAP_EVENT_PARAM_MOD.
struct clap_event_param_mod {
    clap_event_header_t header;
    clap_id param_id;
    void* cookie;
    int32_t note_id;
    int16_t port_index;
    int16_t channel;
    int16_t key;
    double amount;  // is added to the parameter's value
};
using clap_event_param_mod_t = clap_event_param_mod;

/// For the two gesture types: a person has taken hold of a parameter, or let go of it.
struct clap_event_param_gesture {
    clap_event_header_t header;
    clap_id param_id;
};
using clap_event_param_gesture_t = clap_event_param_gesture;

/// The HAS bits say which fields of a transport event hold something.
enum clap_transport_flags {
    CLAP_TRANSPORT_HAS_TEMPO = 1 << 0,
    CLAP_TRANSPORT_HAS_BEATS_TIMELINE = 1 << 1,
    CLAP_TRANSPORT_HAS_SECONDS_TIMELINE = 1 << 2,
    CLAP_TRANSPORT_HAS_TIME_SIGNATURE = 1 << 3,
    CLAP_TRANSPORT_IS_PLAYING = 1 << 4,
    CLAP_TRANSPORT_IS_RECORDING = 1 << 5,
    CLAP_TRANSPORT_IS_LOOP_ACTIVE = 1 << 6,
    CLAP_TRANSPORT_IS_WITHIN_PRE_ROLL = 1 << 7,
};

struct clap_event_transport {
    clap_event_header_t header;
    uint32_t flags;
    clap_beattime song_pos_beats;
    clap_sectime song_pos_seconds;
    double tempo;      // beats per minute
    double tempo_inc;  // change of the tempo per sample
    clap_beattime loop_start_beats;
    clap_beattime loop_end_beats;
    clap_sectime loop_start_seconds;
    clap_sectime loop_end_seconds;
    clap_beattime bar_start;
    int32_t bar_number;  // from 0
    uint16_t tsig_num;
    uint16_t tsig_denom;
};
using clap_event_transport_t = clap_event_transport;

struct clap_event_midi {
    clap_event_header_t header;
    uint16_t port_index;
    uint8_t data[3];
};
using clap_event_midi_t = clap_event_midi;

/// The buffer is the sender's and lives as long as the call that hands the event over.
struct clap_event_midi_sysex {
    clap_event_header_t header;
    uint16_t port_index;
    const uint8_t* buffer;
    uint32_t size;  // bytes
};
using clap_event_midi_sysex_t = clap_event_midi_sysex;

struct clap_event_midi2 {
    clap_event_header_t header;
    uint16_t port_index;
    uint32_t data[4];
};
using clap_event_midi2_t = clap_event_midi2;

/// The host's list of events for the plug-in, sorted by time.
struct clap_input_events {
    void* ctx;
    uint32_t(CLAP_ABI* size)(const clap_input_events* list);
    const clap_event_header_t*(CLAP_ABI* get)(const clap_input_events* list, uint32_t index);
};
using clap_input_events_t = clap_input_events;

/// The plug-in's way to send events. The host copies each; false if it could not.
struct clap_output_events {
    void* ctx;
    bool(CLAP_ABI* try_push)(const clap_output_events* list, const clap_event_header_t* event);
};
using clap_output_events_t = clap_output_events;
