#include "gui/SelectButtonBase.h"

#include "gui/PopupMenu.h"
#include "gui/RootControl.h"
#include "gui/UserInterface.h"

namespace gui {

void SelectButtonBase::ShowPopup()
{
    // Everything here may be gone when the popup returns.
    const std::shared_ptr<gui::Menu> shown = menu;
    const RootControl* root = GetRoot();
    const std::shared_ptr<const RootLiveness> interfaceLife = root ? root->Liveness() : nullptr;
    std::unique_ptr<PopupMenu> popup = userInterface.Platform().CreatePopupMenu();
    if (!popup)
        return;
    shown->Show();
    popup->Show(*shown, Rect::At(ToRoot({}), GetSize()));
    // A component can't part from an interface that no longer exists: it is left alone.
    if (interfaceLife && !interfaceLife->alive)
        static_cast<void>(popup.release());
}

}  // namespace gui
