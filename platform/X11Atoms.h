#pragma once

#include <xcb/xcb.h>

#include <array>

namespace gui {

/// The names that this platform speaks of with other programs. The order is that of `x11AtomNames`.
enum class X11Atom {
    ClipboardSelection,
    Utf8String,
    Targets,
    Text,
    Timestamp,
    Incremental,
    PlainText,
    TransferProperty,
    WmState,
    WmProtocols,
    WmDeleteWindow,
    NetWmName,
    NetWmState,
    NetWmStateFullScreen,
    NetWmStateModal,
    NetWmWindowType,
    NetWmWindowTypeDialog,
    NetWmWindowTypeMenu,
    NetSupported,
    NetActiveWindow,
    XEmbedInfo,
    XdndAware,
    XdndProxy,
    XdndEnter,
    XdndPosition,
    XdndStatus,
    XdndLeave,
    XdndDrop,
    XdndFinished,
    XdndSelection,
    XdndTypeList,
    XdndActionCopy,
    UriList,
    XSettings,
    ResourceManager,
    count
};

inline constexpr std::array<const char*, static_cast<std::size_t>(X11Atom::count)> x11AtomNames{
    "CLIPBOARD",
    "UTF8_STRING",
    "TARGETS",
    "TEXT",
    "TIMESTAMP",
    "INCR",
    "text/plain;charset=utf-8",
    "MV_TRANSFER",
    "WM_STATE",
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "_NET_WM_NAME",
    "_NET_WM_STATE",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_MODAL",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_SUPPORTED",
    "_NET_ACTIVE_WINDOW",
    "_XEMBED_INFO",
    "XdndAware",
    "XdndProxy",
    "XdndEnter",
    "XdndPosition",
    "XdndStatus",
    "XdndLeave",
    "XdndDrop",
    "XdndFinished",
    "XdndSelection",
    "XdndTypeList",
    "XdndActionCopy",
    "text/uri-list",
    "_XSETTINGS_SETTINGS",
    "RESOURCE_MANAGER",
};

}  // namespace gui
