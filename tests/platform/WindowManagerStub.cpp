#include "WindowManagerStub.h"

#include <xcb/randr.h>

#include <chrono>
#include <cstdlib>
#include <cstring>

WindowManagerStub::WindowManagerStub()
{
    const std::uint32_t redirect = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(program, program.Root(), XCB_CW_EVENT_MASK, &redirect);
    const xcb_atom_t can = program.Atom("_NET_WM_STATE_FULLSCREEN");
    xcb_change_property(program, XCB_PROP_MODE_REPLACE, program.Root(), program.Atom("_NET_SUPPORTED"),
                        XCB_ATOM_ATOM, 32, 1, &can);
    program.Sync();
    thread = std::thread([this] { Run(); });
}

WindowManagerStub::~WindowManagerStub()
{
    ends = true;
    thread.join();
    xcb_delete_property(program, program.Root(), program.Atom("_NET_SUPPORTED"));
    program.Sync();
}

void WindowManagerStub::Close(xcb_window_t client)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = client;
    message.type = program.Atom("WM_PROTOCOLS");
    message.data.data32[0] = program.Atom("WM_DELETE_WINDOW");
    xcb_send_event(program, 0, client, 0, reinterpret_cast<const char*>(&message));
    program.Sync();
}

void WindowManagerStub::Run()
{
    while (!ends) {
        while (xcb_generic_event_t* event = program.Poll()) {
            if ((event->response_type & 0x7F) == XCB_MAP_REQUEST)
                Manage(reinterpret_cast<xcb_map_request_event_t*>(event)->window);
            std::free(event);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

void WindowManagerStub::Manage(xcb_window_t client)
{
    const std::uint32_t normal[] = {1, XCB_WINDOW_NONE};
    const xcb_atom_t state = program.Atom("WM_STATE");
    xcb_change_property(program, XCB_PROP_MODE_REPLACE, client, state, state, 32, 2, normal);
    const std::string wanted = program.Property(client, "_NET_WM_STATE");
    const xcb_atom_t full = program.Atom("_NET_WM_STATE_FULLSCREEN");
    for (std::size_t i = 0; i + 4 <= wanted.size(); i += 4)
        if (std::memcmp(wanted.data() + i, &full, 4) == 0)
            FillMonitor(client);
    xcb_map_window(program, client);
    program.Sync();
    lastManaged = client;
}

void WindowManagerStub::FillMonitor(xcb_window_t client)
{
    const auto place = program.Geometry(client);
    xcb_randr_get_monitors_reply_t* monitors =
        xcb_randr_get_monitors_reply(program, xcb_randr_get_monitors(program, program.Root(), 1), nullptr);
    for (auto each = xcb_randr_get_monitors_monitors_iterator(monitors); each.rem;
         xcb_randr_monitor_info_next(&each)) {
        const xcb_randr_monitor_info_t& info = *each.data;
        if (place[0] < info.x || place[0] >= info.x + info.width)
            continue;
        const std::uint32_t values[] = {static_cast<std::uint32_t>(info.x),
                                        static_cast<std::uint32_t>(info.y), info.width, info.height};
        xcb_configure_window(program, client,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT,
                             values);
    }
    std::free(monitors);
}
