#pragma once

#include "gui/Geometry.h"
#include "platform/X11Connection.h"
#include "platform/X11EventHandler.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace gui {

class X11Interface;

/// Takes files that are dropped on the interface, by the desktop's drag protocol, version 5. A drag reaches
/// the host's top-level window first: where that takes no drops of its own, it passes them on to ours.
class X11FileDrop : public X11EventHandler {
public:
    explicit X11FileDrop(X11Interface& ui);
    ~X11FileDrop() override;

    void Attach(xcb_window_t newWindow);
    void Accept(bool accepts);

    bool HandleEvent(const xcb_generic_event_t& event) override;

    /// The path of the first local file of a list of addresses; empty if there is none.
    static std::string FirstFile(std::string_view uriList);

private:
    using MessageData = std::array<std::uint32_t, 5>;

    void Announce();
    void Withdraw();
    void Enter(const MessageData& data);
    void Move(xcb_window_t target, const MessageData& data);
    void Drop(xcb_window_t target, const MessageData& data);

    X11Interface& interface;
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_window_t proxied = XCB_WINDOW_NONE;  // the host's window that passes drags on to ours
    xcb_window_t source = XCB_WINDOW_NONE;
    bool accepting = false;
    bool carriesFiles = false;
    bool isOver = false;
    BasicPoint<int> position;  // of the last motion, device pixels of the window
};

}  // namespace gui
