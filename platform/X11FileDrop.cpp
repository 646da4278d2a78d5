#include "platform/X11FileDrop.h"

#include "platform/X11Clipboard.h"
#include "platform/X11Control.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace gui {

namespace {

constexpr std::uint32_t protocolVersion = 5;

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string decodePercent(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low >= 0)
            i += 2;
        decoded += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
    }
    return decoded;
}

bool isThisMachine(std::string_view host)
{
    char name[256] = {};
    return host.empty() || host == "localhost" ||
           (gethostname(name, sizeof name - 1) == 0 && host == std::string_view(name));
}

// "file:/path", "file:///path" and "file://host/path" are all in use.
std::string pathOf(std::string_view uri)
{
    constexpr std::string_view scheme = "file:";
    if (!uri.starts_with(scheme))
        return {};
    uri.remove_prefix(scheme.size());
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        const std::size_t slash = std::min(uri.find('/'), uri.size());
        if (!isThisMachine(uri.substr(0, slash)))
            return {};
        uri.remove_prefix(slash);
    }
    std::string path = decodePercent(uri);
    return path.starts_with('/') && path.find('\0') == std::string::npos ? path : std::string();
}

}  // namespace

X11FileDrop::X11FileDrop(X11Interface& ui) : interface(ui) {}

X11FileDrop::~X11FileDrop() { Withdraw(); }

std::string X11FileDrop::FirstFile(std::string_view uriList)
{
    while (!uriList.empty()) {
        const std::size_t end = std::min(uriList.find_first_of("\r\n"), uriList.size());
        const std::string_view line = uriList.substr(0, end);
        uriList.remove_prefix(std::min(end + 1, uriList.size()));
        if (std::string path = pathOf(line); !path.empty())
            return path;
    }
    return {};
}

void X11FileDrop::Attach(xcb_window_t newWindow)
{
    Withdraw();
    window = newWindow;
    if (accepting)
        Announce();
}

void X11FileDrop::Accept(bool accepts)
{
    if (accepting == accepts)
        return;
    accepting = accepts;
    if (accepting)
        Announce();
    else
        Withdraw();
}

void X11FileDrop::Announce()
{
    X11Connection& display = interface.Connection();
    const xcb_atom_t aware = display.Atom(X11Atom::XdndAware);
    const xcb_atom_t proxy = display.Atom(X11Atom::XdndProxy);
    const std::vector<std::uint32_t> version{protocolVersion};
    const std::vector<std::uint32_t> ours{window};
    display.SetProperty(window, aware, XCB_ATOM_ATOM, version);
    const xcb_window_t host = interface.Window().HostWindow();
    if (!host || interface.Window().IsOwnTopLevel())
        return;
    // What the host does with drops stays as it is.
    const xcb_window_t top = display.TopLevelOf(host);
    if (display.GetProperty(top, aware).format || display.GetProperty(top, proxy).format)
        return;
    proxied = top;
    display.SetProperty(top, aware, XCB_ATOM_ATOM, version);
    display.SetProperty(top, proxy, XCB_ATOM_WINDOW, ours);
    // A proxy that doesn't name itself counts as left over.
    display.SetProperty(window, proxy, XCB_ATOM_WINDOW, ours);
    display.Flush();
}

void X11FileDrop::Withdraw()
{
    X11Connection& display = interface.Connection();
    if (proxied) {
        xcb_delete_property(display, proxied, display.Atom(X11Atom::XdndAware));
        xcb_delete_property(display, proxied, display.Atom(X11Atom::XdndProxy));
        proxied = XCB_WINDOW_NONE;
    }
    if (window)
        xcb_delete_property(display, window, display.Atom(X11Atom::XdndAware));
    source = XCB_WINDOW_NONE;
}

bool X11FileDrop::HandleEvent(const xcb_generic_event_t& event)
{
    if (EventKind(event) != XCB_CLIENT_MESSAGE)
        return false;
    X11Connection& display = interface.Connection();
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    MessageData data;
    std::memcpy(data.data(), message.data.data32, sizeof message.data.data32);
    if (message.type == display.Atom(X11Atom::XdndEnter))
        Enter(data);
    else if (message.type == display.Atom(X11Atom::XdndPosition))
        Move(message.window, data);
    else if (message.type == display.Atom(X11Atom::XdndDrop))
        Drop(message.window, data);
    else if (message.type == display.Atom(X11Atom::XdndLeave))
        source = XCB_WINDOW_NONE;
    else
        return false;
    return true;
}

void X11FileDrop::Enter(const MessageData& data)
{
    X11Connection& display = interface.Connection();
    source = data[0];
    isOver = false;
    const bool manyTypes = data[1] & 1;
    const std::vector<std::uint32_t> types =
        manyTypes ? display.GetProperty(source, display.Atom(X11Atom::XdndTypeList)).Items()
                  : std::vector<std::uint32_t>(data.begin() + 2, data.end());
    carriesFiles = std::find(types.begin(), types.end(), display.Atom(X11Atom::UriList)) != types.end();
}

void X11FileDrop::Move(xcb_window_t target, const MessageData& data)
{
    X11Connection& display = interface.Connection();
    if (data[0] != source)
        return;
    const auto origin = display.OriginOf(window).value_or(std::array<int, 2>{});
    position = {static_cast<int>(data[2] >> 16) - origin[0], static_cast<int>(data[2] & 0xFFFF) - origin[1]};
    const BasicPoint<int> size = interface.Window().DeviceSize();
    isOver = accepting && carriesFiles && !interface.IsInputBlocked() &&
             DeviceRect{0, 0, size.x, size.y}.Contains(position);
    // No rectangle: every motion is to be told.
    constexpr std::uint32_t accepts = 1, tellAlways = 2;
    display.SendMessage(source, source, display.Atom(X11Atom::XdndStatus),
                        {target, (isOver ? accepts : 0u) | tellAlways, 0, 0,
                         isOver ? display.Atom(X11Atom::XdndActionCopy) : 0u});
    display.Flush();
}

void X11FileDrop::Drop(xcb_window_t target, const MessageData& data)
{
    X11Connection& display = interface.Connection();
    if (data[0] != source)
        return;
    const auto list = isOver ? interface.Clipboard().Fetch(display.Atom(X11Atom::XdndSelection),
                                                           display.Atom(X11Atom::UriList), data[2])
                             : std::nullopt;
    display.SendMessage(source, source, display.Atom(X11Atom::XdndFinished),
                        {target, list ? 1u : 0u, list ? display.Atom(X11Atom::XdndActionCopy) : 0u, 0, 0});
    display.Flush();
    source = XCB_WINDOW_NONE;
    const std::string path = list ? FirstFile(*list) : std::string();
    if (path.empty())
        return;
    const float perPixel = 1.0f / interface.Backing().Scale();
    interface.DropFile({static_cast<float>(position.x) * perPixel, static_cast<float>(position.y) * perPixel},
                       path);
}

}  // namespace gui
