#include "platform/X11NestedLoop.h"

#include "platform/X11Interface.h"

namespace gui {

bool X11NestedLoop::Run(X11Interface& owner, const std::function<bool()>& isDone, X11Interface* dialog)
{
    const std::shared_ptr<const bool> alive = owner.Liveness();
    while (*alive && !owner.IsWindowLost()) {
        if (isDone())
            return true;
        std::vector<X11Pump*> pumps{&owner.Pump()};
        if (dialog)
            pumps.push_back(&dialog->Pump());
        X11Pump::Wait(pumps, X11Pump::tickMs);
        owner.Pump().Serve();
        if (*alive && dialog)
            dialog->Pump().Serve();
    }
    return false;
}

}  // namespace gui
