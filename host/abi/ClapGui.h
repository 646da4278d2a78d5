#pragma once

#include "abi/ClapCore.h"

constexpr char CLAP_EXT_GUI[] = "clap.gui";

// Window systems. Sizes are physical pixels in win32 and x11, logical units in the other two.
constexpr char CLAP_WINDOW_API_WIN32[] = "win32";
constexpr char CLAP_WINDOW_API_COCOA[] = "cocoa";
constexpr char CLAP_WINDOW_API_X11[] = "x11";
constexpr char CLAP_WINDOW_API_WAYLAND[] = "wayland";

using clap_hwnd = void*;
using clap_nsview = void*;
using clap_xwnd = unsigned long;

/// A window of the host; api says which member of the union holds it.
struct clap_window {
    const char* api;
    union {
        clap_nsview cocoa;
        clap_xwnd x11;
        clap_hwnd win32;
        void* ptr;
    };
};
using clap_window_t = clap_window;

/// The ratio counts only if both directions resize and preserve_aspect_ratio is set.
struct clap_gui_resize_hints {
    bool can_resize_horizontally;
    bool can_resize_vertically;
    bool preserve_aspect_ratio;
    uint32_t aspect_ratio_width;
    uint32_t aspect_ratio_height;
};
using clap_gui_resize_hints_t = clap_gui_resize_hints;

/// The editor, from create to destroy. A host embeds it (set_parent) or lets it float (set_transient).
/// Thread: main.
struct clap_plugin_gui {
    bool(CLAP_ABI* is_api_supported)(const clap_plugin_t* plugin, const char* api, bool is_floating);
    // A wish only; the api given back is one of the constants above.
    bool(CLAP_ABI* get_preferred_api)(const clap_plugin_t* plugin, const char** api, bool* is_floating);
    // Not shown yet. A null api means the plug-in's own choice, floating.
    bool(CLAP_ABI* create)(const clap_plugin_t* plugin, const char* api, bool is_floating);
    void(CLAP_ABI* destroy)(const clap_plugin_t* plugin);

    // Goes before any scale that the plug-in found itself; false leaves the plug-in's own.
    bool(CLAP_ABI* set_scale)(const clap_plugin_t* plugin, double scale);
    bool(CLAP_ABI* get_size)(const clap_plugin_t* plugin, uint32_t* width, uint32_t* height);
    bool(CLAP_ABI* can_resize)(const clap_plugin_t* plugin);
    bool(CLAP_ABI* get_resize_hints)(const clap_plugin_t* plugin, clap_gui_resize_hints_t* hints);
    // Turns a size into the nearest one that the editor can take; sets nothing.
    bool(CLAP_ABI* adjust_size)(const clap_plugin_t* plugin, uint32_t* width, uint32_t* height);
    bool(CLAP_ABI* set_size)(const clap_plugin_t* plugin, uint32_t width, uint32_t height);

    bool(CLAP_ABI* set_parent)(const clap_plugin_t* plugin, const clap_window_t* window);
    bool(CLAP_ABI* set_transient)(const clap_plugin_t* plugin, const clap_window_t* window);
    void(CLAP_ABI* suggest_title)(const clap_plugin_t* plugin, const char* title);

    bool(CLAP_ABI* show)(const clap_plugin_t* plugin);
    bool(CLAP_ABI* hide)(const clap_plugin_t* plugin);
};
using clap_plugin_gui_t = clap_plugin_gui;

/// Thread: any.
struct clap_host_gui {
    void(CLAP_ABI* resize_hints_changed)(const clap_host_t* host);
    // True takes the size, with or without a set_size. Off the main thread true only means "heard": if it
    // fails later, set_size brings the old size back.
    bool(CLAP_ABI* request_resize)(const clap_host_t* host, uint32_t width, uint32_t height);
    bool(CLAP_ABI* request_show)(const clap_host_t* host);
    bool(CLAP_ABI* request_hide)(const clap_host_t* host);
    // A floating window was closed; with was_destroyed, the host answers with destroy.
    void(CLAP_ABI* closed)(const clap_host_t* host, bool was_destroyed);
};
using clap_host_gui_t = clap_host_gui;
