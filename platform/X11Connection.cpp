#include "platform/X11Connection.h"

#include "platform/PipeSignalGuard.h"
#include "platform/XkbHeader.h"

#include <poll.h>
#include <sys/socket.h>
#include <xcb/randr.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <chrono>
#include <cstring>

namespace gui {

namespace {

constexpr std::uint32_t wholeProperty = 1u << 22;  // in words: 16 MiB

template <class Version>
bool atLeast(const Version* version, unsigned major, unsigned minor)
{
    return version && (version->major_version > major ||
                       (version->major_version == major && version->minor_version >= minor));
}

}  // namespace

std::vector<std::uint32_t> X11Connection::PropertyValue::Items() const
{
    std::vector<std::uint32_t> items(format == 32 ? bytes.size() / 4 : 0);
    if (!items.empty())
        std::memcpy(items.data(), bytes.data(), items.size() * 4);
    return items;
}

std::unique_ptr<X11Connection> X11Connection::Open()
{
    const PipeSignalGuard guard;
    int screenNumber = 0;
    xcb_connection_t* opened = xcb_connect(nullptr, &screenNumber);
    std::unique_ptr<X11Connection> made(new X11Connection(opened, screenNumber));
    if (made->IsLost() || !made->screen || !made->ChooseVisual())
        return nullptr;
    made->InternAtoms();
    made->QueryExtensions();
    return made->IsLost() ? nullptr : std::move(made);
}

X11Connection::X11Connection(xcb_connection_t* opened, int screenNumber) : connection(opened)
{
    if (xcb_connection_has_error(connection))
        return;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (screens.rem > 1 && screenNumber-- > 0)
        xcb_screen_next(&screens);
    screen = screens.data;
}

X11Connection::~X11Connection()
{
    const PipeSignalGuard guard;
    xcb_disconnect(connection);
}

// The root's own visual where it will do: no window then needs a blending compositor.
bool X11Connection::ChooseVisual()
{
    for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem; xcb_depth_next(&depths)) {
        if (depths.data->depth != 24 && depths.data->depth != 32)
            continue;
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem;
             xcb_visualtype_next(&visuals)) {
            const xcb_visualtype_t& candidate = *visuals.data;
            if (candidate._class != XCB_VISUAL_CLASS_TRUE_COLOR || candidate.red_mask != 0xFF0000 ||
                candidate.green_mask != 0xFF00 || candidate.blue_mask != 0xFF)
                continue;
            const bool isRoots = candidate.visual_id == screen->root_visual;
            if (!visual.id || isRoots || (depths.data->depth == 24 && visual.depth == 32))
                visual = {candidate.visual_id, depths.data->depth};
            if (isRoots)
                break;
        }
        if (visual.id == screen->root_visual)
            break;
    }
    if (!visual.id)
        return false;
    colormap = screen->default_colormap;
    if (visual.id != screen->root_visual) {
        colormap = xcb_generate_id(connection);
        xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap, screen->root, visual.id);
    }
    return true;
}

void X11Connection::InternAtoms()
{
    std::array<xcb_intern_atom_cookie_t, x11AtomNames.size()> cookies;
    for (std::size_t i = 0; i < atoms.size(); ++i)
        cookies[i] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(x11AtomNames[i])),
                                     x11AtomNames[i]);
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookies[i], nullptr));
        atoms[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

void X11Connection::QueryExtensions()
{
    const auto find = [this](xcb_extension_t& id) {
        const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection, &id);
        return data && data->present ? data : nullptr;
    };
    if (const auto* data = find(xcb_shm_id)) {
        const X11Reply<xcb_shm_query_version_reply_t> version(
            xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
        extensions.sharedMemoryEvent = data->first_event;
        // A descriptor can't go through a network, and trying ends the connection.
        extensions.sharedMemory = atLeast(version.get(), 1, 2) && IsLocal() ? 2 : 0;
    }
    if (const auto* data = find(xcb_randr_id)) {
        const X11Reply<xcb_randr_query_version_reply_t> version(
            xcb_randr_query_version_reply(connection, xcb_randr_query_version(connection, 1, 5), nullptr));
        extensions.randrEvent = atLeast(version.get(), 1, 5) ? data->first_event : 0;
    }
    if (const auto* data = find(xcb_xfixes_id)) {
        const X11Reply<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(connection, xcb_xfixes_query_version(connection, 5, 0), nullptr));
        extensions.fixesEvent = version ? data->first_event : 0;
    }
    if (const auto* data = find(xcb_input_id)) {
        const X11Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
        extensions.inputOpcode = atLeast(version.get(), 2, 1) ? data->major_opcode : 0;
    }
    if (const auto* data = find(xcb_xkb_id)) {
        const X11Reply<xcb_xkb_use_extension_reply_t> use(
            xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
        extensions.keyboardEvent = use && use->supported ? data->first_event : 0;
    }
}

bool X11Connection::IsLocal() const
{
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    return getsockname(Descriptor(), reinterpret_cast<sockaddr*>(&address), &length) == 0 &&
           address.ss_family == AF_UNIX;
}

int X11Connection::Descriptor() const { return xcb_get_file_descriptor(connection); }

bool X11Connection::IsLost() const { return xcb_connection_has_error(connection) != 0; }

X11Event X11Connection::NextEvent()
{
    if (waiting.empty())
        return X11Event(xcb_poll_for_event(connection));
    X11Event event = std::move(waiting.front());
    waiting.pop_front();
    return event;
}

X11Event X11Connection::WaitFor(const std::function<bool(const xcb_generic_event_t&)>& accepts, int timeoutMs)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    Flush();
    for (;;) {
        while (X11Event event{xcb_poll_for_event(connection)}) {
            if (accepts(*event))
                return event;
            waiting.push_back(std::move(event));
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0 || IsLost())
            return nullptr;
        pollfd wait{Descriptor(), POLLIN, 0};
        poll(&wait, 1, static_cast<int>(left));
    }
}

X11Connection::PropertyValue X11Connection::GetProperty(xcb_window_t window, xcb_atom_t property, bool remove)
{
    PropertyValue value;
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, remove, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, wholeProperty),
        nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return value;
    value.type = reply->type;
    value.format = reply->format;
    value.bytes.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return value;
}

void X11Connection::SetProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                const std::vector<std::uint32_t>& items)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(items.size()), items.data());
}

void X11Connection::SetProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                const std::string& bytes)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void X11Connection::SendMessage(xcb_window_t to, xcb_window_t window, xcb_atom_t type,
                                const std::array<std::uint32_t, 5>& data, std::uint32_t mask)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::memcpy(message.data.data32, data.data(), sizeof message.data.data32);
    xcb_send_event(connection, 0, to, mask, reinterpret_cast<const char*>(&message));
}

xcb_window_t X11Connection::ParentOf(xcb_window_t window)
{
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t X11Connection::TopLevelOf(xcb_window_t window)
{
    xcb_window_t highest = window;
    for (xcb_window_t at = window; at && at != RootWindow(); at = ParentOf(at)) {
        if (GetProperty(at, Atom(X11Atom::WmState)).format)
            return at;
        highest = at;
    }
    return highest;
}

std::optional<std::array<int, 2>> X11Connection::OriginOf(xcb_window_t window)
{
    const X11Reply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, window, RootWindow(), 0, 0), nullptr));
    if (!reply)
        return std::nullopt;
    return std::array<int, 2>{reply->dst_x, reply->dst_y};
}

}  // namespace gui
