#pragma once

#include "gui/PopupMenu.h"

namespace gui {

class X11Interface;

/// Draws menus itself, as a desktop's toolkit would.
class X11PopupMenu : public PopupMenu {
public:
    explicit X11PopupMenu(X11Interface& ui);
    MenuItem* Show(Menu& menu, const Rect& rect) override;

private:
    X11Interface& interface;
};

}  // namespace gui
