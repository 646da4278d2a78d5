#pragma once

#include "abi/ClapCore.h"

// The extensions of one or two functions.

constexpr char CLAP_EXT_LATENCY[] = "clap.latency";

struct clap_plugin_latency {
    // Thread: main, while active or being activated. Samples.
    uint32_t(CLAP_ABI* get)(const clap_plugin_t* plugin);
};
using clap_plugin_latency_t = clap_plugin_latency;

struct clap_host_latency {
    // Thread: main, within activate: a latency never changes while active.
    void(CLAP_ABI* changed)(const clap_host_t* host);
};
using clap_host_latency_t = clap_host_latency;

constexpr char CLAP_EXT_TAIL[] = "clap.tail";

struct clap_plugin_tail {
    // Thread: main or audio. Samples; 2147483647 (INT32_MAX) and more are endless.
    uint32_t(CLAP_ABI* get)(const clap_plugin_t* plugin);
};
using clap_plugin_tail_t = clap_plugin_tail;

struct clap_host_tail {
    // Thread: audio.
    void(CLAP_ABI* changed)(const clap_host_t* host);
};
using clap_host_tail_t = clap_host_tail;

constexpr char CLAP_EXT_THREAD_CHECK[] = "clap.thread-check";

/// Thread: any, as it must be.
struct clap_host_thread_check {
    bool(CLAP_ABI* is_main_thread)(const clap_host_t* host);
    bool(CLAP_ABI* is_audio_thread)(const clap_host_t* host);
};
using clap_host_thread_check_t = clap_host_thread_check;

constexpr char CLAP_EXT_LOG[] = "clap.log";

enum {
    CLAP_LOG_DEBUG = 0,
    CLAP_LOG_INFO = 1,
    CLAP_LOG_WARNING = 2,
    CLAP_LOG_ERROR = 3,
    CLAP_LOG_FATAL = 4,
    CLAP_LOG_HOST_MISBEHAVING = 5,  // the two last are for the layers that check the other side
    CLAP_LOG_PLUGIN_MISBEHAVING = 6,
};
using clap_log_severity = int32_t;

struct clap_host_log {
    // Thread: any; hosts queue messages of the audio thread.
    void(CLAP_ABI* log)(const clap_host_t* host, clap_log_severity severity, const char* msg);
};
using clap_host_log_t = clap_host_log;

// On Linux a plug-in owns no event loop: the host's main loop runs its timers and watches its descriptors,
// such as the connection to the display.
constexpr char CLAP_EXT_TIMER_SUPPORT[] = "clap.timer-support";

/// Thread: main.
struct clap_plugin_timer_support {
    void(CLAP_ABI* on_timer)(const clap_plugin_t* plugin, clap_id timer_id);
};
using clap_plugin_timer_support_t = clap_plugin_timer_support;

/// Thread: main. Hosts may lengthen a short period, but should manage 30 calls a second.
struct clap_host_timer_support {
    bool(CLAP_ABI* register_timer)(const clap_host_t* host, uint32_t period_ms, clap_id* timer_id);
    bool(CLAP_ABI* unregister_timer)(const clap_host_t* host, clap_id timer_id);
};
using clap_host_timer_support_t = clap_host_timer_support;

constexpr char CLAP_EXT_POSIX_FD_SUPPORT[] = "clap.posix-fd-support";

enum {
    CLAP_POSIX_FD_READ = 1 << 0,
    CLAP_POSIX_FD_WRITE = 1 << 1,  // fires as long as writing won't block
    CLAP_POSIX_FD_ERROR = 1 << 2,
};
using clap_posix_fd_flags_t = uint32_t;

/// Thread: main. Level-triggered: called again until the plug-in has read or written.
struct clap_plugin_posix_fd_support {
    void(CLAP_ABI* on_fd)(const clap_plugin_t* plugin, int fd, clap_posix_fd_flags_t flags);
};
using clap_plugin_posix_fd_support_t = clap_plugin_posix_fd_support;

/// Thread: main.
struct clap_host_posix_fd_support {
    bool(CLAP_ABI* register_fd)(const clap_host_t* host, int fd, clap_posix_fd_flags_t flags);
    bool(CLAP_ABI* modify_fd)(const clap_host_t* host, int fd, clap_posix_fd_flags_t flags);
    bool(CLAP_ABI* unregister_fd)(const clap_host_t* host, int fd);
};
using clap_host_posix_fd_support_t = clap_host_posix_fd_support;

constexpr char CLAP_EXT_GAIN_ADJUSTMENT_METERING[] = "clap.gain-adjustment-metering/0";

struct clap_plugin_gain_adjustment_metering {
    // Thread: audio. Gain of the last block in dB, below 0 for a reduction.
    double(CLAP_ABI* get)(const clap_plugin_t* plugin);
};
using clap_plugin_gain_adjustment_metering_t = clap_plugin_gain_adjustment_metering;
