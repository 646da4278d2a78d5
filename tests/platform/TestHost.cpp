#include "TestHost.h"

#include <xcb/xtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

namespace {

template <class T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply)
{
    return {reply, &std::free};
}

}  // namespace

TestHost::TestHost(Shows what) : connection(xcb_connect(nullptr, nullptr))
{
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    if (what != Shows::Nothing)
        CreateWindow(what);
    Sync();
}

void TestHost::CreateWindow(Shows what)
{
    constexpr std::uint8_t seeThroughDepth = 32;
    std::uint8_t depth = screen->root_depth;
    xcb_visualid_t visual = screen->root_visual;
    xcb_colormap_t colors = screen->default_colormap;
    for (auto each = xcb_screen_allowed_depths_iterator(screen); each.rem; xcb_depth_next(&each))
        if (what == Shows::SeeThroughWindow && each.data->depth == seeThroughDepth) {
            depth = seeThroughDepth;
            visual = xcb_depth_visuals_iterator(each.data).data->visual_id;
            colors = xcb_generate_id(connection);
            xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colors, screen->root, visual);
        }
    window = xcb_generate_id(connection);
    const std::uint32_t values[] = {0xFFFFFFFF, 0,
                                    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                        XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE,
                                    colors};
    xcb_create_window(connection, depth, window, screen->root, 100, 50, 400, 300, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
    xcb_map_window(connection, window);
}

TestHost::~TestHost() { xcb_disconnect(connection); }

void TestHost::Sync() const
{
    owned(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

void TestHost::DestroyWindow()
{
    xcb_destroy_window(connection, window);
    Sync();
}

void TestHost::ResizeWindow(int width, int height)
{
    const std::uint32_t values[] = {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    Sync();
}

void TestHost::MoveWindow(int x, int y)
{
    const std::uint32_t values[] = {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)};
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    Sync();
}

void TestHost::TakeFocus()
{
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    Sync();
}

xcb_window_t TestHost::FocusOwner() const
{
    return owned(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr))->focus;
}

void TestHost::Fake(int type, int detail, int x, int y)
{
    xcb_test_fake_input(connection, static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(detail), 0,
                        screen->root, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    Sync();
}

void TestHost::Move(int x, int y) { Fake(XCB_MOTION_NOTIFY, 0, x, y); }

void TestHost::Button(int button, bool down) { Fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button); }

void TestHost::Click(int x, int y, int button)
{
    Move(x, y);
    Button(button, true);
    Button(button, false);
}

void TestHost::AddKey(std::uint32_t symbol)
{
    const xcb_setup_t& setup = *xcb_get_setup(connection);
    const auto map = owned(xcb_get_keyboard_mapping_reply(
        connection,
        xcb_get_keyboard_mapping(connection, setup.min_keycode,
                                 static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1)),
        nullptr));
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int key = setup.max_keycode; key >= setup.min_keycode; --key)
        if (symbols[(key - setup.min_keycode) * map->keysyms_per_keycode] == XCB_NO_SYMBOL) {
            xcb_change_keyboard_mapping(connection, 1, static_cast<std::uint8_t>(key), 1, &symbol);
            return Sync();
        }
}

void TestHost::Key(std::uint32_t symbol, bool down)
{
    const xcb_setup_t& setup = *xcb_get_setup(connection);
    const int first = setup.min_keycode, count = setup.max_keycode - first + 1;
    const auto map = owned(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup.min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int i = 0; i < count; ++i)
        if (symbols[i * map->keysyms_per_keycode] == symbol)
            return Fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, first + i);
}

void TestHost::Type(std::uint32_t symbol)
{
    Key(symbol, true);
    Key(symbol, false);
}

std::uint32_t TestHost::Pixel(int x, int y) const
{
    const auto image = owned(xcb_get_image_reply(connection,
                                                 xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP,
                                                               screen->root, static_cast<std::int16_t>(x),
                                                               static_cast<std::int16_t>(y), 1, 1, ~0u),
                                                 nullptr));
    std::uint32_t pixel = 0;
    if (image)
        std::memcpy(&pixel, xcb_get_image_data(image.get()), 4);
    return pixel & 0xFFFFFF;
}

std::vector<std::uint32_t> TestHost::Picture(xcb_window_t of) const
{
    const auto place = Geometry(of);
    const auto image = owned(xcb_get_image_reply(connection,
                                                 xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, of, 0,
                                                               0, static_cast<std::uint16_t>(place[2]),
                                                               static_cast<std::uint16_t>(place[3]), ~0u),
                                                 nullptr));
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(place[2] * place[3]));
    if (image)
        std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * 4);
    return pixels;
}

std::vector<xcb_window_t> TestHost::TopWindows() const
{
    std::vector<xcb_window_t> shown;
    const auto tree =
        owned(xcb_query_tree_reply(connection, xcb_query_tree(connection, screen->root), nullptr));
    for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
        const xcb_window_t each = xcb_query_tree_children(tree.get())[i];
        const auto attributes = owned(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, each), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && each != window)
            shown.push_back(each);
    }
    return shown;
}

std::array<int, 4> TestHost::Geometry(xcb_window_t of) const
{
    const auto geometry =
        owned(xcb_get_geometry_reply(connection, xcb_get_geometry(connection, of), nullptr));
    if (!geometry)
        return {};
    return {geometry->x, geometry->y, geometry->width, geometry->height};
}

xcb_window_t TestHost::FirstChild(xcb_window_t of) const
{
    const auto tree = owned(xcb_query_tree_reply(connection, xcb_query_tree(connection, of), nullptr));
    return tree && xcb_query_tree_children_length(tree.get()) ? xcb_query_tree_children(tree.get())[0]
                                                              : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_atom_t TestHost::Atom(const char* name) const
{
    return owned(xcb_intern_atom_reply(
                     connection,
                     xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
                     nullptr))
        ->atom;
}

std::string TestHost::Property(xcb_window_t of, const char* name, bool remove) const
{
    const auto reply = owned(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, remove, of, Atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1u << 22),
        nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

xcb_generic_event_t* TestHost::WaitFor(int kind)
{
    xcb_generic_event_t* found = nullptr;
    Wait([&] {
        while (xcb_generic_event_t* event = Poll()) {
            if ((event->response_type & 0x7F) == kind) {
                found = event;
                return true;
            }
            std::free(event);
        }
        return false;
    });
    return found;
}

bool TestHost::Wait(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}
