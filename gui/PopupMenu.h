#pragma once

#include "gui/Component.h"
#include "gui/Geometry.h"

namespace gui {

class Menu;
class MenuItem;

/// Shows menus; the platform makes it. Thread: main.
class PopupMenu : public Component {
public:
    using Component::Component;
    /// Shows the menu under a rectangle of the root's and runs until a choice, with the root's lock freed.
    /// The item's `OnClick` has fired, with the lock held again, when this returns.
    /// Null if nothing was chosen, or if the interface was destroyed meanwhile: check before using it.
    virtual MenuItem* Show(Menu& menu, const Rect& rect) = 0;
};

}  // namespace gui
