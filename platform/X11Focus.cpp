#include "platform/X11Focus.h"

#include "platform/X11Control.h"
#include "platform/X11Keyboard.h"

#include <cstdint>

namespace gui {

namespace {

// Keys under the mouse go to the window there, whoever has the focus, if it asks for them: ours asks only
// while it has it.
constexpr std::uint32_t keyEvents = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;

}  // namespace

X11Focus::X11Focus(X11Interface& ui) : interface(ui) {}

void X11Focus::Attach(xcb_window_t newWindow)
{
    window = newWindow;
    held = false;
    previous = XCB_WINDOW_NONE;
}

void X11Focus::Take()
{
    if (held || !window)
        return;
    X11Connection& display = interface.Connection();
    const X11Reply<xcb_get_input_focus_reply_t> now(
        xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr));
    if (now && now->focus != window)
        previous = now->focus;
    SetHeld(true);
    Request(window);
}

void X11Focus::GiveBack()
{
    if (!held || !window || interface.Window().IsOwnTopLevel())
        return;
    const bool wasNobodys = previous <= XCB_INPUT_FOCUS_POINTER_ROOT;
    const xcb_window_t to = wasNobodys ? HostWindow() : previous;
    SetHeld(false);
    Request(to);
}

void X11Focus::Request(xcb_window_t to)
{
    X11Connection& display = interface.Connection();
    const auto wish = xcb_set_input_focus(display, XCB_INPUT_FOCUS_PARENT, to, display.LastInputTime());
    lastRequest = static_cast<std::uint16_t>(wish.sequence);
    awaitsAnswer = true;
    display.Flush();
}

void X11Focus::HandOver(const xcb_key_press_event_t& key)
{
    if (!interface.Window().HostWindow())
        return;
    X11Connection& display = interface.Connection();
    xcb_key_press_event_t sent = key;
    sent.event = HostWindow();
    sent.child = XCB_WINDOW_NONE;
    const bool isPress = (key.response_type & 0x7F) == XCB_KEY_PRESS;
    xcb_send_event(display, 0, sent.event, isPress ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE,
                   reinterpret_cast<const char*>(&sent));
}

bool X11Focus::HandleEvent(const xcb_generic_event_t& event)
{
    const int kind = EventKind(event);
    if (kind != XCB_FOCUS_IN && kind != XCB_FOCUS_OUT)
        return false;
    const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(event);
    if (focus.event != window)
        return false;
    // A key that someone grabs, or the mouse over a focus elsewhere, moves no focus.
    if (focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB ||
        focus.detail == XCB_NOTIFY_DETAIL_POINTER)
        return true;
    if (awaitsAnswer && static_cast<std::int16_t>(focus.sequence - lastRequest) < 0)
        return true;
    awaitsAnswer = false;
    SetHeld(kind == XCB_FOCUS_IN);
    X11KeySink* sink = interface.Keyboard().Sink();
    if (!held && sink)
        sink->KeyboardLost();
    return true;
}

void X11Focus::SetHeld(bool now)
{
    if (now == held)
        return;
    held = now;
    X11Connection& display = interface.Connection();
    const X11Reply<xcb_get_window_attributes_reply_t> is(
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window), nullptr));
    if (!is)
        return;
    const std::uint32_t events = held ? is->your_event_mask | keyEvents : is->your_event_mask & ~keyEvents;
    xcb_change_window_attributes(display, window, XCB_CW_EVENT_MASK, &events);
}

// The top-level one, where toolkits expect keys.
xcb_window_t X11Focus::HostWindow() const
{
    const X11Control& control = interface.Window();
    return control.TopLevel() ? control.TopLevel() : control.HostWindow();
}

}  // namespace gui
