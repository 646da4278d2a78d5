#pragma once

#include "gui/Button.h"
#include "gui/Menu.h"

namespace gui {

/// A button that opens a menu.
class SelectButtonBase : public Button {
public:
    using Button::Button;

    gui::Menu& Menu() { return *menu; }

protected:
    bool OpensPopup() const override { return menu->ItemCount() > 0; }
    void ShowPopup() override;

private:
    // Shared with the popup while it is open: this button may die meanwhile.
    std::shared_ptr<gui::Menu> menu = std::make_shared<gui::Menu>();
};

}  // namespace gui
