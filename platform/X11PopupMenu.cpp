#include "platform/X11PopupMenu.h"

#include "gui/Menu.h"
#include "platform/PipeSignalGuard.h"
#include "platform/X11Control.h"
#include "platform/X11MenuSession.h"
#include "platform/X11Mouse.h"
#include "platform/X11NestedLoop.h"

namespace gui {

X11PopupMenu::X11PopupMenu(X11Interface& ui) : PopupMenu(ui), interface(ui) {}

MenuItem* X11PopupMenu::Show(Menu& menu, const Rect& rect)
{
    if (!interface.IsMainThread() || interface.IsWindowLost())
        return nullptr;
    const PipeSignalGuard guard;
    const std::shared_ptr<const bool> alive = interface.Liveness();
    // The release that ends the press goes to the menu.
    interface.Mouse().Cancel();
    if (!*alive)
        return nullptr;
    const auto origin = interface.Connection().OriginOf(interface.Window().Window());
    if (!origin)
        return nullptr;
    const DeviceRect anchor =
        ToDevice(rect, interface.Backing().Scale()).Translated({(*origin)[0], (*origin)[1]});
    X11MenuSession& session = interface.BeginModal(std::make_unique<X11MenuSession>(interface, menu));
    bool ended = false;
    if (session.Start(anchor)) {
        const RootControl::Suspension suspension(interface.Window());
        ended = X11NestedLoop::Run(interface, [this, &session] {
            const RootControl::Entry entry(interface.Window());
            session.Tick();
            return session.IsDone();
        });
    }
    if (!*alive)
        return nullptr;
    MenuItem* chosen = ended ? session.Chosen() : nullptr;
    interface.EndModal(session);
    if (chosen)
        chosen->ItemSelected(*chosen);
    return *alive ? chosen : nullptr;
}

}  // namespace gui
