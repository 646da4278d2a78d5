#pragma once

#include "abi/ClapCore.h"

constexpr char CLAP_EXT_CONTEXT_MENU[] = "clap.context-menu/1";
constexpr char CLAP_EXT_CONTEXT_MENU_COMPAT[] = "clap.context-menu.draft/0";

enum {
    CLAP_CONTEXT_MENU_TARGET_KIND_GLOBAL = 0,
    CLAP_CONTEXT_MENU_TARGET_KIND_PARAM = 1,  // id is a parameter's
};

/// What the menu is about.
struct clap_context_menu_target {
    uint32_t kind;
    clap_id id;
};
using clap_context_menu_target_t = clap_context_menu_target;

/// Kinds of items, each with the record that add_item takes.
enum {
    CLAP_CONTEXT_MENU_ITEM_ENTRY = 0,          // clap_context_menu_entry
    CLAP_CONTEXT_MENU_ITEM_CHECK_ENTRY = 1,    // clap_context_menu_check_entry
    CLAP_CONTEXT_MENU_ITEM_SEPARATOR = 2,      // null
    CLAP_CONTEXT_MENU_ITEM_BEGIN_SUBMENU = 3,  // clap_context_menu_submenu
    CLAP_CONTEXT_MENU_ITEM_END_SUBMENU = 4,    // null
    CLAP_CONTEXT_MENU_ITEM_TITLE = 5,          // clap_context_menu_item_title
};
using clap_context_menu_item_kind_t = uint32_t;

struct clap_context_menu_entry {
    const char* label;
    bool is_enabled;
    clap_id action_id;  // what perform gets
};
using clap_context_menu_entry_t = clap_context_menu_entry;

struct clap_context_menu_check_entry {
    const char* label;
    bool is_enabled;
    bool is_checked;
    clap_id action_id;
};
using clap_context_menu_check_entry_t = clap_context_menu_check_entry;

struct clap_context_menu_item_title {
    const char* title;
    bool is_enabled;
};
using clap_context_menu_item_title_t = clap_context_menu_item_title;

struct clap_context_menu_submenu {
    const char* label;
    bool is_enabled;
};
using clap_context_menu_submenu_t = clap_context_menu_submenu;

/// Collects items during one call of populate, on the thread of that call.
struct clap_context_menu_builder {
    void* ctx;
    bool(CLAP_ABI* add_item)(const clap_context_menu_builder* builder,
                             clap_context_menu_item_kind_t item_kind, const void* item_data);
    bool(CLAP_ABI* supports)(const clap_context_menu_builder* builder,
                             clap_context_menu_item_kind_t item_kind);
};
using clap_context_menu_builder_t = clap_context_menu_builder;

/// The plug-in's items in a menu of the host. A null target is the global one. Thread: main.
struct clap_plugin_context_menu {
    bool(CLAP_ABI* populate)(const clap_plugin_t* plugin, const clap_context_menu_target_t* target,
                             const clap_context_menu_builder_t* builder);
    bool(CLAP_ABI* perform)(const clap_plugin_t* plugin, const clap_context_menu_target_t* target,
                            clap_id action_id);
};
using clap_plugin_context_menu_t = clap_plugin_context_menu;

/// The host's items in a menu of the plug-in, or a menu of the host altogether. Thread: main.
struct clap_host_context_menu {
    bool(CLAP_ABI* populate)(const clap_host_t* host, const clap_context_menu_target_t* target,
                             const clap_context_menu_builder_t* builder);
    bool(CLAP_ABI* perform)(const clap_host_t* host, const clap_context_menu_target_t* target,
                            clap_id action_id);
    // May change with the editor's window.
    bool(CLAP_ABI* can_popup)(const clap_host_t* host);
    // x and y are relative to an embedded editor's window; for a floating one, absolute on that screen.
    bool(CLAP_ABI* popup)(const clap_host_t* host, const clap_context_menu_target_t* target,
                          int32_t screen_index, int32_t x, int32_t y);
};
using clap_host_context_menu_t = clap_host_context_menu;
