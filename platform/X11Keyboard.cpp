#include "platform/X11Keyboard.h"

#include "gui/InputFlags.h"
#include "platform/X11Control.h"
#include "platform/X11Focus.h"
#include "platform/X11Mouse.h"
#include "platform/XkbHeader.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <cstdlib>

namespace gui {

namespace {

// The user's language says which compose sequences there are; asking the process's locale would give that of
// the host's choice, or none.
const char* composeLocale()
{
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* value = std::getenv(name);
            value && *value && std::string(value) != "C" && std::string(value) != "POSIX")
            return value;
    return "en_US.UTF-8";
}

int keyCodeOf(xkb_keysym_t symbol)
{
    switch (symbol) {
    case XKB_KEY_Up:
    case XKB_KEY_KP_Up:
        return KeyCode::up;
    case XKB_KEY_Down:
    case XKB_KEY_KP_Down:
        return KeyCode::down;
    case XKB_KEY_Left:
    case XKB_KEY_KP_Left:
        return KeyCode::left;
    case XKB_KEY_Right:
    case XKB_KEY_KP_Right:
        return KeyCode::right;
    case XKB_KEY_Delete:
    case XKB_KEY_KP_Delete:
        return KeyCode::deleteKey;
    case XKB_KEY_Home:
    case XKB_KEY_KP_Home:
        return KeyCode::home;
    case XKB_KEY_End:
    case XKB_KEY_KP_End:
        return KeyCode::end;
    case XKB_KEY_Escape:
        return KeyCode::escape;
    default:
        return 0;
    }
}

}  // namespace

X11Keyboard::X11Keyboard(X11Interface& ui) : interface(ui), context(xkb_context_new(XKB_CONTEXT_NO_FLAGS))
{
    if (!context)
        return;
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    if (interface.Connection().Has().keyboardEvent)
        SelectEvents();
    ReadLayout();
    MakeCompose();
}

X11Keyboard::~X11Keyboard() = default;

void X11Keyboard::SelectEvents()
{
    constexpr std::uint16_t kinds = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                    XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t parts = 0xFF;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
    X11Connection& display = interface.Connection();
    xkb_x11_setup_xkb_extension(display, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    xcb_xkb_select_events_aux(display, XCB_XKB_ID_USE_CORE_KBD, kinds, 0, 0, parts, parts, &details);
    // Only changes are told from now on: what is held already has to be asked for.
    const X11Reply<xcb_xkb_get_state_reply_t> now(
        xcb_xkb_get_state_reply(display, xcb_xkb_get_state(display, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    if (now)
        modifiers = X11Mouse::FlagsOf(now->mods) & InputFlags::keyboardMask;
}

void X11Keyboard::ReadLayout()
{
    X11Connection& display = interface.Connection();
    layout.reset();
    if (display.Has().keyboardEvent) {
        const std::int32_t device = xkb_x11_get_core_keyboard_device_id(display);
        if (device >= 0)
            layout.reset(
                xkb_x11_keymap_new_from_device(context.get(), display, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    }
    if (!layout)
        layout.reset(xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
    state.reset(layout ? xkb_state_new(layout.get()) : nullptr);
}

void X11Keyboard::MakeCompose()
{
    xkb_compose_table* table =
        xkb_compose_table_new_from_locale(context.get(), composeLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (!table)
        return;
    compose.reset(xkb_compose_state_new(table, XKB_COMPOSE_STATE_NO_FLAGS));
    xkb_compose_table_unref(table);
}

bool X11Keyboard::HandleEvent(const xcb_generic_event_t& event)
{
    const int kind = EventKind(event);
    if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE)
        return HandleLayoutEvent(event);
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    if (key.event != interface.Window().Window())
        return false;
    interface.Connection().NoteTime(key.time);
    if (kind == XCB_KEY_PRESS)
        Pressed(key);
    else if (std::erase(handedOver, key.detail))
        interface.Focus().HandOver(key);
    return true;
}

bool X11Keyboard::HandleLayoutEvent(const xcb_generic_event_t& event)
{
    X11Connection& display = interface.Connection();
    if (!display.Has().keyboardEvent || EventKind(event) != display.Has().keyboardEvent)
        return false;
    const auto& notify = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (notify.xkbType == XCB_XKB_STATE_NOTIFY)
        modifiers = X11Mouse::FlagsOf(notify.mods) & InputFlags::keyboardMask;
    else
        ReadLayout();
    return true;
}

X11Key X11Keyboard::Translate(const xcb_key_press_event_t& event)
{
    X11Key key;
    key.flags = X11Mouse::FlagsOf(event.state) & InputFlags::keyboardMask;
    if (!state)
        return key;
    constexpr std::uint32_t allModifiers = 0xFF;
    constexpr int groupShift = 13;
    xkb_state_update_mask(state.get(), event.state & allModifiers, 0, 0, 0, 0, event.state >> groupShift & 3);
    key.symbol = xkb_state_key_get_one_sym(state.get(), event.detail);
    if (compose && xkb_compose_state_feed(compose.get(), key.symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
        char text[64];
        switch (xkb_compose_state_get_status(compose.get())) {
        case XKB_COMPOSE_COMPOSING:
            key.symbol = XKB_KEY_NoSymbol;
            return key;
        case XKB_COMPOSE_COMPOSED:
            xkb_compose_state_get_utf8(compose.get(), text, sizeof text);
            key.symbol = xkb_compose_state_get_one_sym(compose.get());
            key.text = text;
            xkb_compose_state_reset(compose.get());
            return key;
        case XKB_COMPOSE_CANCELLED:
            xkb_compose_state_reset(compose.get());
            key.symbol = XKB_KEY_NoSymbol;
            return key;
        case XKB_COMPOSE_NOTHING:
            break;
        }
    }
    char text[64];
    const int length = xkb_state_key_get_utf8(state.get(), event.detail, text, sizeof text);
    key.text.assign(text, static_cast<std::size_t>(std::clamp(length, 0, static_cast<int>(sizeof text) - 1)));
    return key;
}

void X11Keyboard::Pressed(const xcb_key_press_event_t& event)
{
    if (interface.IsInputBlocked())
        return;
    // The release of an earlier press of it went to the host itself.
    std::erase(handedOver, event.detail);
    const std::shared_ptr<const bool> alive = interface.Liveness();
    const X11Key key = Translate(event);
    // A modifier or a dead key alone decides nothing yet.
    const bool isModifier = key.symbol >= XKB_KEY_Shift_L && key.symbol <= XKB_KEY_Hyper_R;
    const bool isLevel = key.symbol >= XKB_KEY_ISO_Lock && key.symbol <= XKB_KEY_ISO_Level5_Lock;
    if (key.symbol == XKB_KEY_NoSymbol || isModifier || isLevel)
        return;
    if (OfferKey(key) || !*alive)
        return;
    handedOver.push_back(event.detail);
    interface.Focus().HandOver(event);
    // From now on the host gets its keys itself.
    X11Control& root = interface.Window();
    if (root.IsLeftDown())
        return;
    root.SetCapture(nullptr);
    if (*alive)
        interface.Focus().GiveBack();
}

bool X11Keyboard::OfferKey(const X11Key& key)
{
    if (sink)
        return sink->TakeKey(key);
    X11Control& root = interface.Window();
    if (key.symbol == XKB_KEY_Escape && root.FullScreen.value()) {
        root.FullScreen.assign(false);
        return true;
    }
    return OfferToTree(key);
}

bool X11Keyboard::OfferToTree(const X11Key& key)
{
    RootControl& root = interface.Window();
    const int flags = interface.FilterFlags(key.flags);
    // Menus and shortcuts with these are the host's and the desktop's.
    if ((flags & InputFlags::systemKey) || (flags & (InputFlags::alt | InputFlags::ctrl)) == InputFlags::alt)
        return false;
    if (const int code = keyCodeOf(key.symbol))
        return root.WindowKey(code, 0, flags);
    const std::shared_ptr<const bool> alive = interface.Liveness();
    bool taken = false;
    for (const char32_t character : CodePoints(key.text)) {
        taken = root.WindowKey(KeyCode::character, static_cast<int>(character), flags) || taken;
        if (!*alive)
            return true;
    }
    return taken;
}

std::vector<char32_t> X11Keyboard::CodePoints(const std::string& utf8)
{
    std::vector<char32_t> points;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto first = static_cast<unsigned char>(utf8[i]);
        const int more = first < 0x80 ? 0 : first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : -1;
        if (more < 0 || i + static_cast<std::size_t>(more) >= utf8.size())
            break;
        char32_t point = more == 0 ? first : first & (0x3F >> more);
        for (int k = 1; k <= more; ++k)
            point = point << 6 | (static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]) & 0x3F);
        points.push_back(point);
        i += static_cast<std::size_t>(more) + 1;
    }
    return points;
}

}  // namespace gui
