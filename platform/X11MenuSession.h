#pragma once

#include "platform/X11EventHandler.h"
#include "platform/X11MenuWindow.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gui {

class X11Interface;
struct X11Key;

/// A popup menu with its submenus from opening to choice. It has mouse and keyboard to itself meanwhile.
class X11MenuSession : public X11EventHandler {
public:
    X11MenuSession(X11Interface& ui, Menu& topMenu);
    ~X11MenuSession() override;

    /// @param anchor  device pixels of the screen
    /// False if another program has the mouse and keeps it, or there is nothing to show.
    bool Start(const DeviceRect& anchor);
    /// What goes by time: submenus that open, menus that scroll.
    void Tick();
    bool IsDone() const { return done; }
    MenuItem* Chosen() const { return chosen; }

    bool HandleEvent(const xcb_generic_event_t& event) override;

private:
    bool Grab();
    void OpenLevel(Menu& menu, const DeviceRect& anchor, MenuPlacement::Side side);
    void OpenSubmenu(bool selectFirst);
    void CloseAbove(std::size_t level);
    int LevelAt(BasicPoint<int> point) const;
    void MouseMoved(BasicPoint<int> point);
    void MousePressed(int detail, BasicPoint<int> point);
    void MouseReleased(int detail, BasicPoint<int> point);
    void KeyPressed(const X11Key& key);
    void Type(const std::string& text);
    void Choose(std::size_t level, int row);
    X11MenuWindow& Top() { return *levels.back(); }
    std::uint32_t Now() const;

    X11Interface& interface;
    Menu& menu;
    std::vector<std::unique_ptr<X11MenuWindow>> levels;
    DeviceRect monitor;
    BasicPoint<int> pointer{-1, -1};
    std::uint32_t startTime = 0;
    std::uint32_t hoverTime = 0;    // when the selection last changed
    bool opensByHover = false;      // a submenu, once the mouse has rested
    std::uint32_t headingTime = 0;  // when the mouse last headed for a submenu
    std::string typed;
    std::uint32_t typedTime = 0;
    MenuItem* chosen = nullptr;
    bool movedSinceStart = false;
    bool done = false;
};

}  // namespace gui
