#include "platform/X11Control.h"

#include "platform/PipeSignalGuard.h"
#include "platform/X11Focus.h"
#include "platform/X11Mouse.h"

#include <algorithm>
#include <cstdint>

namespace gui {

namespace {

constexpr char windowClass[] = "MV_UIWindow\0MV_UIWindow";
constexpr std::uint32_t normalEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                       XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
                                       XCB_EVENT_MASK_FOCUS_CHANGE;
// Of a window's size hints: how many numbers, and that the place is meant.
constexpr std::size_t sizeHintItems = 18;
constexpr std::uint32_t placed = 4;

}  // namespace

X11Control::X11Control(X11Interface& ui) : RootControl(ui), interface(ui) {}

X11Control::~X11Control()
{
    if (window)
        xcb_destroy_window(interface.Connection(), window);
}

bool X11Control::Create(const X11Interface::Options& options)
{
    parent = options.parent;
    X11Connection& display = interface.Connection();
    SetSize(options.size);
    const xcb_window_t in = parent ? parent : display.RootWindow();
    const DeviceRect rect =
        parent ? DeviceRect::At({0, 0}, WantedSize()) : PlaceOver(options.over, WantedSize());
    if (!CreateNative(in, rect, false))
        return false;
    if (!parent)
        DescribeDialog(options);
    Map(true);
    // The host may ask for the window as soon as this returns.
    const X11Reply<xcb_get_input_focus_reply_t> made(
        xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr));
    FollowHost();
    return made != nullptr;
}

// In the middle, and wholly on that monitor: half of a dialog on the next one can't be read.
DeviceRect X11Control::PlaceOver(const DeviceRect& over, BasicPoint<int> size) const
{
    const X11Screens::Monitor* monitor = interface.Screens().MonitorOf(over);
    if (!monitor)
        return DeviceRect::At({0, 0}, size);
    const DeviceRect& room = monitor->rect;
    const BasicPoint<int> middle = over.IsEmpty() ? room.Middle() : over.Middle();
    const auto fit = [](int wanted, int length, int low, int high) {
        return std::max(low, std::min(wanted, high - length));
    };
    return DeviceRect::At({fit(middle.x - size.x / 2, size.x, room.left, room.right),
                           fit(middle.y - size.y / 2, size.y, room.top, room.bottom)},
                          size);
}

bool X11Control::CreateNative(xcb_window_t in, const DeviceRect& rect, bool overrideRedirect)
{
    X11Connection& display = interface.Connection();
    const X11Connection::Visual& visual = display.WindowVisual();
    window = xcb_generate_id(display);
    deviceSize = rect.Size();
    // No background: the display would show it for a moment before every repaint.
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_NONE,   0,
                                    XCB_GRAVITY_NORTH_WEST, overrideRedirect ? 1u : 0u,
                                    normalEvents,           display.Colormap()};
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(
        display,
        xcb_create_window_checked(display, static_cast<std::uint8_t>(visual.depth), window, in,
                                  static_cast<std::int16_t>(rect.left), static_cast<std::int16_t>(rect.top),
                                  static_cast<std::uint16_t>(std::max(1, rect.Width())),
                                  static_cast<std::uint16_t>(std::max(1, rect.Height())), 0,
                                  XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.id,
                                  XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY |
                                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                                  values)));
    if (error || display.IsLost()) {
        window = XCB_WINDOW_NONE;
        return false;
    }
    display.SetProperty(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                        std::string(windowClass, sizeof windowClass));
    // Embedders that ask get told that it follows their rules and wants to be seen.
    const xcb_atom_t embedding = display.Atom(X11Atom::XEmbedInfo);
    display.SetProperty(window, embedding, embedding, std::vector<std::uint32_t>{0, 1});
    WindowChanged();
    interface.WindowCreated(window);
    return true;
}

void X11Control::DestroyNative()
{
    if (!window)
        return;
    const xcb_window_t old = window;
    window = XCB_WINDOW_NONE;
    WindowChanged();
    xcb_destroy_window(interface.Connection(), old);
    interface.Connection().Flush();
}

void X11Control::DescribeDialog(const X11Interface::Options& options)
{
    X11Connection& display = interface.Connection();
    if (options.transientFor)
        display.SetProperty(window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW,
                            std::vector<std::uint32_t>{options.transientFor});
    display.SetProperty(window, display.Atom(X11Atom::NetWmWindowType), XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::NetWmWindowTypeDialog)});
    display.SetProperty(window, display.Atom(X11Atom::NetWmState), XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::NetWmStateModal)});
    display.SetProperty(window, display.Atom(X11Atom::WmProtocols), XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::WmDeleteWindow)});
    display.SetProperty(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, options.title);
    display.SetProperty(window, display.Atom(X11Atom::NetWmName), display.Atom(X11Atom::Utf8String),
                        options.title);
    // Fixed size: least and largest are the same.
    std::vector<std::uint32_t> hints(sizeHintItems, 0);
    hints[0] = placed | (16 | 32);
    hints[5] = hints[7] = static_cast<std::uint32_t>(deviceSize.x);
    hints[6] = hints[8] = static_cast<std::uint32_t>(deviceSize.y);
    display.SetProperty(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
}

// Where a host's window moves, this one moves without a word; and the host may embed its window anew.
void X11Control::FollowHost()
{
    X11Connection& display = interface.Connection();
    topLevel = display.TopLevelOf(parent ? parent : window);
    if (!parent || FullScreen.value())
        return;
    const std::uint32_t moves = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    for (const xcb_window_t each : {parent, topLevel})
        xcb_change_window_attributes(display, each, XCB_CW_EVENT_MASK, &moves);
    interface.NotePosition();
}

// In full screen it would stay over everything: the host's window isn't its parent then.
void X11Control::ForgetWindow() { DestroyNative(); }

DeviceRect X11Control::ScreenRect() const
{
    const auto origin = window ? interface.Connection().OriginOf(window) : std::nullopt;
    return DeviceRect::At(origin ? BasicPoint<int>{(*origin)[0], (*origin)[1]} : BasicPoint<int>{},
                          deviceSize);
}

void X11Control::SetParentWindow(xcb_window_t newParent)
{
    parent = newParent;
    if (!window || FullScreen.value())
        return;
    xcb_reparent_window(interface.Connection(), window, parent, 0, 0);
    Map(true);
    FollowHost();
}

void X11Control::Map(bool visible)
{
    if (window && visible)
        xcb_map_window(interface.Connection(), window);
    else if (window)
        xcb_unmap_window(interface.Connection(), window);
}

bool X11Control::HandleEvent(const xcb_generic_event_t& event)
{
    switch (EventKind(event)) {
    case XCB_EXPOSE: {
        const auto& exposed = reinterpret_cast<const xcb_expose_event_t&>(event);
        if (!IsOurs(exposed.window))
            return false;
        Exposed(DeviceRect::At({exposed.x, exposed.y}, {exposed.width, exposed.height}));
        return true;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        interface.NotePosition();
        if (!IsOurs(configured.window))
            return false;
        FollowSize(configured);
        return true;
    }
    case XCB_REPARENT_NOTIFY:
        if (!IsOurs(reinterpret_cast<const xcb_reparent_notify_event_t&>(event).event) && !FullScreen.value())
            FollowHost();
        return false;
    case XCB_MAP_NOTIFY:
        // A dialog is there to be answered, and full screen to be left by a key.
        if (IsOwnTopLevel() && IsOurs(reinterpret_cast<const xcb_map_notify_event_t&>(event).window))
            interface.Focus().Take();
        return false;
    case XCB_UNMAP_NOTIFY:
        if (IsOurs(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window))
            interface.Mouse().Cancel();
        return false;
    case XCB_DESTROY_NOTIFY: {
        const xcb_window_t gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        if (!IsOurs(gone) && !(parent && gone == parent))
            return false;
        interface.WindowGone();
        return true;
    }
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (!IsOurs(message.window) ||
            message.data.data32[0] != interface.Connection().Atom(X11Atom::WmDeleteWindow))
            return false;
        if (FullScreen.value())
            FullScreen.assign(false);
        else
            interface.OnCloseRequested.fire(&interface);
        return true;
    }
    default:
        return false;
    }
}

// Only what is younger than our own last wish: an older one is on its way to being undone.
void X11Control::FollowSize(const xcb_configure_notify_event_t& event)
{
    if (awaitsConfigure && static_cast<std::int16_t>(event.sequence - lastConfigure) < 0)
        return;
    awaitsConfigure = false;
    const BasicPoint<int> size{event.width, event.height};
    if (size == deviceSize)
        return;
    deviceSize = size;
    const float scale = interface.Backing().Scale();
    SetSize({static_cast<float>(size.x) / scale, static_cast<float>(size.y) / scale});
}

BasicPoint<int> X11Control::WantedSize() const
{
    const float scale = interface.Backing().Scale();
    return {ToDevice(GetWidth(), scale), ToDevice(GetHeight(), scale)};
}

void X11Control::Resized()
{
    const PipeSignalGuard guard;
    const BasicPoint<int> size = WantedSize();
    if (window && size != deviceSize && !FullScreen.value()) {
        deviceSize = size;
        const std::uint32_t values[] = {static_cast<std::uint32_t>(std::max(1, size.x)),
                                        static_cast<std::uint32_t>(std::max(1, size.y))};
        const auto wish = xcb_configure_window(interface.Connection(), window,
                                               XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
        lastConfigure = static_cast<std::uint16_t>(wish.sequence);
        awaitsConfigure = true;
        interface.Connection().Flush();
    }
    RootControl::Resized();
    Invalidate();
}

bool X11Control::CanManageFullScreen()
{
    X11Connection& display = interface.Connection();
    const auto supported =
        display.GetProperty(display.RootWindow(), display.Atom(X11Atom::NetSupported)).Items();
    return std::find(supported.begin(), supported.end(), display.Atom(X11Atom::NetWmStateFullScreen)) !=
           supported.end();
}

void X11Control::EnterFullScreen()
{
    const PipeSignalGuard guard;
    X11Connection& display = interface.Connection();
    const DeviceRect here = ScreenRect();
    const X11Screens::Monitor* monitor = interface.Screens().MonitorOf(here);
    if (!window || !monitor)
        return;
    windowedSize = GetSize();
    // One pixel taller: compositors take a window that covers a monitor exactly for a game, and stop
    // composing for it, with a flash at its start and end.
    DeviceRect rect = monitor->rect;
    ++rect.bottom;
    DestroyNative();
    const bool managed = CanManageFullScreen();
    if (!CreateNative(display.RootWindow(), rect, !managed)) {
        interface.WindowGone();
        return;
    }
    if (topLevel)
        display.SetProperty(window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW,
                            std::vector<std::uint32_t>{topLevel});
    display.SetProperty(window, display.Atom(X11Atom::NetWmState), XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::NetWmStateFullScreen)});
    display.SetProperty(window, display.Atom(X11Atom::WmProtocols), XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::WmDeleteWindow)});
    // The place says which monitor to fill.
    std::vector<std::uint32_t> hints(sizeHintItems, 0);
    hints[0] = placed;
    display.SetProperty(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
    Map(true);
    const float scale = interface.Backing().Scale();
    SetSize({static_cast<float>(rect.Width()) / scale, static_cast<float>(rect.Height()) / scale});
    Invalidate();
}

void X11Control::ExitFullScreen()
{
    const PipeSignalGuard guard;
    if (windowedSize == Point{})
        return;
    interface.Focus().GiveBack();
    DestroyNative();
    const Point size = windowedSize;
    windowedSize = {};
    const float scale = interface.Backing().Scale();
    const DeviceRect rect = DeviceRect::At({0, 0}, {ToDevice(size.x, scale), ToDevice(size.y, scale)});
    if (!CreateNative(parent ? parent : interface.Connection().RootWindow(), rect, false)) {
        interface.WindowGone();
        return;
    }
    SetSize(size);
    Map(true);
    FollowHost();
    Invalidate();
}

}  // namespace gui
