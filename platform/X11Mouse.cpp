#include "platform/X11Mouse.h"

#include "gui/InputFlags.h"
#include "platform/X11Control.h"
#include "platform/X11Focus.h"
#include "platform/X11Keyboard.h"

#include <xcb/xinput.h>

#include <cstdlib>

namespace gui {

namespace {

constexpr int wheelUp = 4, wheelDown = 5, wheelLeft = 6, wheelRight = 7;

/// The toolkit's number of a display's button; -1 for those that nobody hears of.
int buttonOf(int detail)
{
    switch (detail) {
    case XCB_BUTTON_INDEX_1:
        return MouseButton::left;
    case XCB_BUTTON_INDEX_2:
        return MouseButton::middle;
    case XCB_BUTTON_INDEX_3:
        return MouseButton::right;
    default:
        return -1;
    }
}

int flagOfButton(int button)
{
    constexpr int flags[] = {InputFlags::leftButton, InputFlags::rightButton, InputFlags::middleButton};
    return flags[button];
}

double fromFixed(xcb_input_fp3232_t value)
{
    return static_cast<double>(value.integral) + static_cast<double>(value.frac) / 4294967296.0;
}

float fromFixed(xcb_input_fp1616_t value) { return static_cast<float>(value) / 65536.0f; }

}  // namespace

X11Mouse::X11Mouse(X11Interface& ui) : interface(ui) {}

int X11Mouse::FlagsOf(std::uint32_t state) noexcept
{
    struct Row {
        std::uint32_t bit;
        int flag;
    };
    constexpr Row rows[] = {
        {XCB_MOD_MASK_SHIFT, InputFlags::shift},     {XCB_MOD_MASK_CONTROL, InputFlags::ctrl},
        {XCB_MOD_MASK_1, InputFlags::alt},           {XCB_MOD_MASK_4, InputFlags::systemKey},
        {XCB_BUTTON_MASK_1, InputFlags::leftButton}, {XCB_BUTTON_MASK_2, InputFlags::middleButton},
        {XCB_BUTTON_MASK_3, InputFlags::rightButton}};
    int flags = 0;
    for (const Row& row : rows)
        if (state & row.bit)
            flags |= row.flag;
    return flags;
}

void X11Mouse::Attach(xcb_window_t newWindow)
{
    window = newWindow;
    heldButtons = 0;
    inside = false;
    X11Connection& display = interface.Connection();
    if (!display.Has().inputOpcode) {
        const X11Reply<xcb_get_window_attributes_reply_t> is(
            xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window), nullptr));
        const std::uint32_t events = (is ? is->your_event_mask : 0) | XCB_EVENT_MASK_BUTTON_PRESS |
                                     XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
        xcb_change_window_attributes(display, window, XCB_CW_EVENT_MASK, &events);
        return;
    }
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t events;
    } mask = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
              XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE |
                  XCB_INPUT_XI_EVENT_MASK_MOTION | XCB_INPUT_XI_EVENT_MASK_DEVICE_CHANGED};
    xcb_input_xi_select_events(display, window, 1, &mask.head);
    ReadAxes();
}

void X11Mouse::ReadAxes()
{
    axes.Clear();
    X11Connection& display = interface.Connection();
    const X11Reply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        display, xcb_input_xi_query_device(display, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!reply)
        return;
    for (auto device = xcb_input_xi_query_device_infos_iterator(reply.get()); device.rem;
         xcb_input_xi_device_info_next(&device)) {
        std::map<int, double> values;
        for (auto each = xcb_input_xi_device_info_classes_iterator(device.data); each.rem;
             xcb_input_device_class_next(&each))
            if (each.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_VALUATOR) {
                const auto& valuator = reinterpret_cast<const xcb_input_valuator_class_t&>(*each.data);
                values[valuator.number] = fromFixed(valuator.value);
            }
        for (auto each = xcb_input_xi_device_info_classes_iterator(device.data); each.rem;
             xcb_input_device_class_next(&each))
            if (each.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_SCROLL) {
                const auto& scroll = reinterpret_cast<const xcb_input_scroll_class_t&>(*each.data);
                SmoothScroll::Axis axis;
                axis.orientation = scroll.scroll_type == XCB_INPUT_SCROLL_TYPE_HORIZONTAL
                                       ? Orientation::Horizontal
                                       : Orientation::Vertical;
                axis.increment = fromFixed(scroll.increment);
                if (values.contains(scroll.number))
                    axis.value = values[scroll.number];
                axes.SetAxis(device.data->deviceid, scroll.number, axis);
            }
    }
}

void X11Mouse::Cancel()
{
    heldButtons = 0;
    if (interface.Window().IsLeftDown())
        interface.Window().WindowMouseUp(MouseButton::left, {-1.0f, -1.0f}, 0);
}

bool X11Mouse::HandleEvent(const xcb_generic_event_t& event)
{
    switch (EventKind(event)) {
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return HandleCrossing(reinterpret_cast<const xcb_enter_notify_event_t&>(event),
                              EventKind(event) == XCB_ENTER_NOTIFY);
    case XCB_GE_GENERIC:
        return HandleExtended(event);
    default:
        return HandleCore(event);
    }
}

bool X11Mouse::HandleCrossing(const xcb_enter_notify_event_t& crossing, bool enters)
{
    if (crossing.event != window)
        return false;
    if (crossing.detail == XCB_NOTIFY_DETAIL_INFERIOR)
        return true;
    inside = enters;
    // Motions over other windows moved the axes unseen.
    if (enters && interface.Connection().Has().inputOpcode)
        ReadAxes();
    if (!enters && crossing.mode == XCB_NOTIFY_MODE_GRAB && heldButtons)
        Cancel();
    return true;
}

bool X11Mouse::HandleExtended(const xcb_generic_event_t& event)
{
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != interface.Connection().Has().inputOpcode)
        return false;
    if (generic.event_type == XCB_INPUT_DEVICE_CHANGED) {
        ReadAxes();
        return true;
    }
    if (generic.event_type != XCB_INPUT_BUTTON_PRESS && generic.event_type != XCB_INPUT_BUTTON_RELEASE &&
        generic.event_type != XCB_INPUT_MOTION)
        return false;
    // All three have one layout.
    const auto& pointing = reinterpret_cast<const xcb_input_button_press_event_t&>(event);
    if (pointing.event != window)
        return false;
    const float x = fromFixed(pointing.event_x), y = fromFixed(pointing.event_y);
    Pointer pointer{
        ToLogical(x, y),
        {static_cast<int>(fromFixed(pointing.root_x)), static_cast<int>(fromFixed(pointing.root_y))},
        pointing.mods.effective,
        pointing.time};
    const std::uint32_t* buttons = xcb_input_button_press_button_mask(&pointing);
    for (int button = 1; pointing.buttons_len > 0 && button <= 3; ++button)
        if (buttons[0] >> button & 1)
            pointer.state |= XCB_BUTTON_MASK_1 << (button - 1);
    if (generic.event_type == XCB_INPUT_MOTION) {
        const std::uint32_t* mask = xcb_input_button_press_valuator_mask(&pointing);
        const xcb_input_fp3232_t* value = xcb_input_button_press_axisvalues(&pointing);
        for (int number = 0; number < pointing.valuators_len * 32; ++number)
            if (mask[number / 32] >> (number % 32) & 1)
                if (const auto step = axes.Move(pointing.sourceid, number, fromFixed(*value++)))
                    Scroll(step->orientation, step->notches, pointer);
        Moved(pointer);
        return true;
    }
    // A smooth axis also clicks a wheel, for programs that know no better.
    const bool emulated = pointing.flags & XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED;
    if (emulated && axes.HasAxes(pointing.sourceid))
        return true;
    if (generic.event_type == XCB_INPUT_BUTTON_PRESS)
        Pressed(static_cast<int>(pointing.detail), pointer);
    else
        Released(static_cast<int>(pointing.detail), pointer);
    return true;
}

bool X11Mouse::HandleCore(const xcb_generic_event_t& event)
{
    const int kind = EventKind(event);
    if (kind != XCB_BUTTON_PRESS && kind != XCB_BUTTON_RELEASE && kind != XCB_MOTION_NOTIFY)
        return false;
    const auto& pointing = reinterpret_cast<const xcb_button_press_event_t&>(event);
    if (pointing.event != window)
        return false;
    const Pointer pointer{ToLogical(pointing.event_x, pointing.event_y),
                          {pointing.root_x, pointing.root_y},
                          pointing.state,
                          pointing.time};
    if (kind == XCB_MOTION_NOTIFY)
        Moved(pointer);
    else if (kind == XCB_BUTTON_PRESS)
        Pressed(pointing.detail, pointer);
    else
        Released(pointing.detail, pointer);
    return true;
}

void X11Mouse::Pressed(int detail, const Pointer& pointer)
{
    if (interface.IsInputBlocked())
        return;
    interface.Connection().NoteTime(pointer.time);
    if (detail == wheelUp || detail == wheelDown)
        return Scroll(Orientation::Vertical, detail == wheelUp ? 1.0f : -1.0f, pointer);
    if (detail == wheelLeft || detail == wheelRight)
        return Scroll(Orientation::Horizontal, detail == wheelRight ? 1.0f : -1.0f, pointer);
    const int button = buttonOf(detail);
    if (button < 0)
        return;
    heldButtons |= 1 << button;
    if (button == MouseButton::left)
        interface.Focus().Take();
    const int flags = PressFlags(button, pointer);
    const std::shared_ptr<const bool> alive = interface.Liveness();
    if (X11KeySink* sink = interface.Keyboard().Sink())
        sink->MousePressed(pointer.point);
    if (*alive)
        interface.Window().WindowMouseDown(button, pointer.point, interface.FilterFlags(flags));
}

int X11Mouse::PressFlags(int button, const Pointer& pointer)
{
    int flags = FlagsOf(pointer.state) | flagOfButton(button);
    if (IsDoubleClick(button, pointer)) {
        flags |= InputFlags::doubleClick;
        lastPress.reset();
    } else {
        lastPress = Press{button, pointer.device, pointer.time};
    }
    return flags;
}

bool X11Mouse::IsDoubleClick(int button, const Pointer& pointer)
{
    const int distance = interface.Platform().GetDoubleClickDistance();
    return lastPress && lastPress->button == button &&
           pointer.time - lastPress->time <=
               static_cast<std::uint32_t>(interface.Platform().GetDoubleClickTime()) &&
           std::abs(pointer.device.x - lastPress->place.x) <= distance &&
           std::abs(pointer.device.y - lastPress->place.y) <= distance;
}

void X11Mouse::Released(int detail, const Pointer& pointer)
{
    const int button = buttonOf(detail);
    if (button < 0 || !(heldButtons >> button & 1))
        return;
    heldButtons &= ~(1 << button);
    interface.Connection().NoteTime(pointer.time);
    const int flags = FlagsOf(pointer.state) & ~flagOfButton(button);
    interface.Window().WindowMouseUp(button, pointer.point, interface.FilterFlags(flags));
}

void X11Mouse::Moved(const Pointer& pointer)
{
    // A touchpad scrolls without moving.
    if (interface.IsInputBlocked() || pointer.device == lastPlace)
        return;
    lastPlace = pointer.device;
    interface.Window().WindowMouseMove(pointer.point, interface.FilterFlags(FlagsOf(pointer.state)));
}

void X11Mouse::Scroll(Orientation axis, float notches, const Pointer& pointer)
{
    if (interface.IsInputBlocked())
        return;
    const int flags = interface.FilterFlags(FlagsOf(pointer.state));
    const WheelMotion::Scroll scroll = wheel.Step(axis, notches, flags, pointer.time);
    interface.Window().WindowScroll(pointer.point, scroll.flags, scroll.velocity, scroll.delta,
                                    scroll.magnitude);
}

Point X11Mouse::ToLogical(float x, float y) const
{
    const float perPixel = 1.0f / interface.Backing().Scale();
    return {x * perPixel, y * perPixel};
}

}  // namespace gui
