#include "platform/X11MenuSession.h"

#include "gui/Menu.h"
#include "platform/X11Control.h"
#include "platform/X11Keyboard.h"

#include <poll.h>

#include <algorithm>

namespace gui {

namespace {

constexpr int grabAttempts = 20;
constexpr int grabPauseMs = 10;
constexpr std::uint32_t hoverMs = 200;    // until a submenu opens
constexpr std::uint32_t headingMs = 300;  // that a mouse on its way to a submenu may rest
constexpr std::uint32_t clickMs = 250;    // a release sooner belongs to the press that opened the menu
constexpr std::uint32_t typingMs = 1000;
constexpr float wheelStep = 30.0f;  // logical units

}  // namespace

X11MenuSession::X11MenuSession(X11Interface& ui, Menu& topMenu) : interface(ui), menu(topMenu) {}

X11MenuSession::~X11MenuSession()
{
    X11Connection& display = interface.Connection();
    xcb_ungrab_keyboard(display, XCB_CURRENT_TIME);
    xcb_ungrab_pointer(display, XCB_CURRENT_TIME);
    levels.clear();
    display.Flush();
}

std::uint32_t X11MenuSession::Now() const { return interface.Clock()(); }

bool X11MenuSession::Start(const DeviceRect& anchor)
{
    const X11Screens::Monitor* found = interface.Screens().MonitorOf(anchor);
    if (!found)
        return false;
    monitor = found->rect;
    // First of all: keys that come as soon as the menu shows are for it.
    if (!Grab())
        return false;
    OpenLevel(menu, anchor, MenuPlacement::Side::Below);
    startTime = Now();
    return Top().RowCount() > 0;
}

// A button that is still down, or a window manager that just activated the window, may hold the mouse for a
// moment.
bool X11MenuSession::Grab()
{
    constexpr std::uint16_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    X11Connection& display = interface.Connection();
    const xcb_window_t window = interface.Window().Window();
    for (int attempt = 0; attempt < grabAttempts; ++attempt) {
        const X11Reply<xcb_grab_pointer_reply_t> mouse(xcb_grab_pointer_reply(
            display,
            xcb_grab_pointer(display, 0, window, events, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                             XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
            nullptr));
        const X11Reply<xcb_grab_keyboard_reply_t> keys(xcb_grab_keyboard_reply(
            display,
            xcb_grab_keyboard(display, 0, window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        if (!mouse || !keys)
            return false;
        // Without the keyboard it still works by mouse.
        if (mouse->status == XCB_GRAB_STATUS_SUCCESS)
            return true;
        poll(nullptr, 0, grabPauseMs);
    }
    return false;
}

void X11MenuSession::OpenLevel(Menu& shown, const DeviceRect& anchor, MenuPlacement::Side side)
{
    shown.Show();
    levels.push_back(std::make_unique<X11MenuWindow>(interface, shown));
    Top().Open(anchor, side, monitor);
}

void X11MenuSession::OpenSubmenu(bool selectFirst)
{
    opensByHover = false;
    const int row = Top().Selected();
    Menu* submenu = Top().CanSelect(row) ? Top().Submenu(row) : nullptr;
    if (!submenu)
        return;
    OpenLevel(*submenu, Top().SubmenuAnchor(row), MenuPlacement::Side::Beside);
    if (selectFirst)
        Top().Select(Top().NextRow(-1, 1));
}

void X11MenuSession::CloseAbove(std::size_t level) { levels.resize(std::min(levels.size(), level + 1)); }

int X11MenuSession::LevelAt(BasicPoint<int> point) const
{
    for (std::size_t i = levels.size(); i-- > 0;)
        if (levels[i]->ScreenRect().Contains(point))
            return static_cast<int>(i);
    return -1;
}

void X11MenuSession::Tick()
{
    if (done)
        return;
    if (opensByHover && Now() - hoverTime >= hoverMs)
        OpenSubmenu(false);
    if (headingTime && Now() - headingTime >= headingMs) {
        headingTime = 0;
        MouseMoved(pointer);
    }
    // At the upper and lower edge of a long menu the mouse scrolls it.
    const int level = LevelAt(pointer);
    if (level < 0)
        return;
    X11MenuWindow& under = *levels[static_cast<std::size_t>(level)];
    constexpr float step = 4.0f;
    if (const int direction = under.ScrollDirectionAt(pointer))
        under.ScrollBy(direction * ToDevice(step, interface.Backing().Scale()));
}

bool X11MenuSession::HandleEvent(const xcb_generic_event_t& event)
{
    switch (EventKind(event)) {
    case XCB_EXPOSE:
        for (const auto& level : levels)
            if (reinterpret_cast<const xcb_expose_event_t&>(event).window == level->Window()) {
                level->Paint();
                return true;
            }
        return false;
    case XCB_MOTION_NOTIFY: {
        const auto& motion = reinterpret_cast<const xcb_motion_notify_event_t&>(event);
        MouseMoved({motion.root_x, motion.root_y});
        return true;
    }
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE: {
        const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(event);
        interface.Connection().NoteTime(button.time);
        if (EventKind(event) == XCB_BUTTON_PRESS)
            MousePressed(button.detail, {button.root_x, button.root_y});
        else
            MouseReleased(button.detail, {button.root_x, button.root_y});
        return true;
    }
    case XCB_KEY_PRESS:
        KeyPressed(interface.Keyboard().Translate(reinterpret_cast<const xcb_key_press_event_t&>(event)));
        return true;
    case XCB_KEY_RELEASE:
        return true;
    default:
        return false;
    }
}

void X11MenuSession::MouseMoved(BasicPoint<int> point)
{
    movedSinceStart = movedSinceStart || (pointer.x >= 0 && !(point == pointer));
    const BasicPoint<int> from = pointer;
    pointer = point;
    const int level = LevelAt(point);
    if (done || level < 0)
        return;
    const auto at = static_cast<std::size_t>(level);
    X11MenuWindow& under = *levels[at];
    const int row = under.RowAt(point);
    if (row == under.Selected()) {
        headingTime = 0;
        return;
    }
    const bool submenuIsOpen = at + 1 < levels.size();
    if (submenuIsOpen && MenuPlacement::HeadsFor(levels[at + 1]->ScreenRect(), from, point)) {
        headingTime = std::max(Now(), 1u);
        return;
    }
    headingTime = 0;
    CloseAbove(at);
    under.Select(under.CanSelect(row) ? row : -1);
    hoverTime = Now();
    opensByHover = under.Submenu(under.Selected()) != nullptr;
}

void X11MenuSession::MousePressed(int detail, BasicPoint<int> point)
{
    const int level = LevelAt(point);
    if (detail == XCB_BUTTON_INDEX_4 || detail == XCB_BUTTON_INDEX_5) {
        const int step = ToDevice(wheelStep, interface.Backing().Scale());
        if (level >= 0) {
            CloseAbove(static_cast<std::size_t>(level));
            Top().ScrollBy(detail == XCB_BUTTON_INDEX_4 ? -step : step);
        }
        return;
    }
    if (detail > XCB_BUTTON_INDEX_3)
        return;
    if (level < 0) {
        done = true;
        return;
    }
    movedSinceStart = true;
    pointer = point;
    MouseMoved(point);
    if (static_cast<std::size_t>(level) + 1 == levels.size())
        OpenSubmenu(false);
}

void X11MenuSession::MouseReleased(int detail, BasicPoint<int> point)
{
    if (detail > XCB_BUTTON_INDEX_3 || (!movedSinceStart && Now() - startTime < clickMs))
        return;
    const int level = LevelAt(point);
    if (level < 0)
        return;
    const auto at = static_cast<std::size_t>(level);
    const int row = levels[at]->RowAt(point);
    if (levels[at]->CanSelect(row) && !levels[at]->Submenu(row))
        Choose(at, row);
}

void X11MenuSession::KeyPressed(const X11Key& key)
{
    opensByHover = false;
    switch (key.symbol) {
    case XKB_KEY_Down:
    case XKB_KEY_KP_Down:
        return Top().Select(Top().NextRow(Top().Selected(), 1));
    case XKB_KEY_Up:
    case XKB_KEY_KP_Up:
        return Top().Select(Top().NextRow(Top().Selected(), -1));
    case XKB_KEY_Home:
    case XKB_KEY_KP_Home:
        return Top().Select(Top().NextRow(-1, 1));
    case XKB_KEY_End:
    case XKB_KEY_KP_End:
        return Top().Select(Top().NextRow(-1, -1));
    case XKB_KEY_Right:
    case XKB_KEY_KP_Right:
        return OpenSubmenu(true);
    case XKB_KEY_Left:
    case XKB_KEY_KP_Left:
        return levels.size() > 1 ? CloseAbove(levels.size() - 2) : void();
    case XKB_KEY_Escape:
        if (levels.size() > 1)
            CloseAbove(levels.size() - 2);
        else
            done = true;
        return;
    case XKB_KEY_Return:
    case XKB_KEY_KP_Enter:
        if (!Top().CanSelect(Top().Selected()))
            return;
        return Top().Submenu(Top().Selected()) ? OpenSubmenu(true)
                                               : Choose(levels.size() - 1, Top().Selected());
    default:
        return Type(key.text);
    }
}

void X11MenuSession::Type(const std::string& text)
{
    if (text.empty() || static_cast<unsigned char>(text[0]) < ' ')
        return;
    if (Now() - typedTime > typingMs)
        typed.clear();
    typedTime = Now();
    const bool begins = typed.empty();
    typed += text;
    // What goes on may stay where it is.
    const int row = Top().FindText(typed, begins ? Top().Selected() : std::max(Top().Selected(), 0) - 1);
    if (row >= 0)
        Top().Select(row);
}

void X11MenuSession::Choose(std::size_t level, int row)
{
    chosen = &levels[level]->Item(row);
    done = true;
}

}  // namespace gui
