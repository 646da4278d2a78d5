#include "platform/X11Screens.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cstdlib>

namespace gui {

X11Screens::X11Screens(X11Connection& display) : connection(display)
{
    const xcb_window_t root = connection.RootWindow();
    if (connection.Has().randrEvent)
        xcb_randr_select_input(connection, root, XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE);
    // Monitors that are regrouped by hand only show as news of the root, and the letters' size as a property.
    const std::uint32_t news = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &news);
    Refresh();
}

bool X11Screens::IsNews(const xcb_generic_event_t& event) const
{
    switch (EventKind(event)) {
    case XCB_CONFIGURE_NOTIFY:
        return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection.RootWindow();
    case XCB_PROPERTY_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return notify.atom == connection.Atom(X11Atom::XSettings) ||
               (notify.window == connection.RootWindow() &&
                notify.atom == connection.Atom(X11Atom::ResourceManager));
    }
    default:
        return connection.Has().randrEvent &&
               EventKind(event) == connection.Has().randrEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY;
    }
}

bool X11Screens::HandleEvent(const xcb_generic_event_t& event)
{
    if (!IsNews(event))
        return false;
    Refresh();
    changed = true;
    return true;
}

bool X11Screens::TakeChange()
{
    const bool was = changed;
    changed = false;
    return was;
}

void X11Screens::Refresh()
{
    settings = X11DesktopSettings::Read(connection);
    monitors.clear();
    const xcb_window_t root = connection.RootWindow();
    const X11Reply<xcb_randr_get_monitors_reply_t> reply(
        connection.Has().randrEvent
            ? xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, root, 1), nullptr)
            : nullptr);
    if (reply)
        for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem;
             xcb_randr_monitor_info_next(&each)) {
            const xcb_randr_monitor_info_t& info = *each.data;
            const DeviceRect rect = DeviceRect::At(
                {info.x, info.y}, {static_cast<int>(info.width), static_cast<int>(info.height)});
            const int width = static_cast<int>(info.width_in_millimeters);
            if (!rect.IsEmpty())
                monitors.push_back({rect, width, ScaleOf(settings, rect.Width(), rect.Height(), width)});
        }
    const xcb_screen_t& screen = connection.Screen();
    if (monitors.empty() && screen.width_in_pixels && screen.height_in_pixels)
        monitors.push_back({{0, 0, screen.width_in_pixels, screen.height_in_pixels},
                            0,
                            ScaleOf(settings, screen.width_in_pixels, screen.height_in_pixels, 0)});
}

float X11Screens::ScaleOf(const X11DesktopSettings& settings, int widthPixels, int heightPixels,
                          int widthMillimetres)
{
    constexpr float tinyPixelsPerInch = 180.0f;
    constexpr int tinyPixelsHeight = 1440;
    constexpr int leastMillimetres = 160;  // smaller ones give an aspect ratio, or nothing, in its place
    if (settings.fontScale)
        return std::clamp(*settings.fontScale, 0.5f, 8.0f);
    if (widthMillimetres < leastMillimetres || heightPixels < tinyPixelsHeight)
        return 1.0f;
    const float perInch = static_cast<float>(widthPixels) * 25.4f / static_cast<float>(widthMillimetres);
    return perInch >= tinyPixelsPerInch ? 2.0f : 1.0f;
}

const X11Screens::Monitor* X11Screens::MonitorOf(const DeviceRect& rect) const
{
    const auto distance = [&rect](const Monitor& monitor) {
        const BasicPoint<int> a = rect.Middle(), b = monitor.rect.Middle();
        return std::abs(a.x - b.x) + std::abs(a.y - b.y);
    };
    const Monitor* best = nullptr;
    int bestArea = 0;
    for (const Monitor& monitor : monitors) {
        const int area = monitor.rect.Intersected(rect).Area();
        if (!best || area > bestArea || (area == 0 && bestArea == 0 && distance(monitor) < distance(*best))) {
            best = &monitor;
            bestArea = area;
        }
    }
    return best;
}

float X11Screens::SmallestScale() const
{
    if (monitors.empty())
        return 1.0f;
    float scale = 3.0f;
    for (const Monitor& monitor : monitors)
        scale = std::min(scale, monitor.scale);
    return scale;
}

}  // namespace gui
