#pragma once

#include "abi/ClapBasics.h"
#include "abi/ClapEvents.h"

/// The channels of one port during one block. One of data32 and data64 is set.
struct clap_audio_buffer {
    float** data32;  // channel_count pointers to frames_count samples
    double** data64;
    uint32_t channel_count;
    uint32_t latency;  // from or to the audio interface, in samples
    // Bit c: all samples of channel c are the same. A hint: the samples are there all the same.
    uint64_t constant_mask;
};
using clap_audio_buffer_t = clap_audio_buffer;

/// Answer of clap_plugin.process.
enum {
    CLAP_PROCESS_ERROR = 0,  // the host throws the output away
    CLAP_PROCESS_CONTINUE = 1,
    CLAP_PROCESS_CONTINUE_IF_NOT_QUIET = 2,
    CLAP_PROCESS_TAIL = 3,   // go on as long as clap.tail says
    CLAP_PROCESS_SLEEP = 4,  // nothing to do until an event or a change of the input
};
using clap_process_status = int32_t;

/// One block of work. Buffers stand in the order of the ports.
struct clap_process {
    int64_t steady_time;  // samples on a clock that never goes back; -1 if the host has none
    uint32_t frames_count;
    const clap_event_transport_t* transport;  // at the first frame; null in a host without a song
    const clap_audio_buffer_t* audio_inputs;  // read only, unless in place with an output
    clap_audio_buffer_t* audio_outputs;
    uint32_t audio_inputs_count;
    uint32_t audio_outputs_count;
    const clap_input_events_t* in_events;    // sorted by time
    const clap_output_events_t* out_events;  // must be filled sorted by time
};
using clap_process_t = clap_process;
