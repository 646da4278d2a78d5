#include "platform/X11NestedLoop.h"

#include "platform/X11Interface.h"

namespace gui {

namespace {

void serveAll()
{
    const std::vector<X11Interface*> all = X11Interface::OfThread();
    std::vector<std::shared_ptr<const bool>> alive;
    std::vector<X11Pump*> pumps;
    for (X11Interface* each : all) {
        alive.push_back(each->Liveness());
        pumps.push_back(&each->Pump());
    }
    X11Pump::Wait(pumps, X11Pump::tickMs);
    // Any of them may end others.
    for (std::size_t i = 0; i < all.size(); ++i)
        if (*alive[i])
            pumps[i]->Serve();
}

}  // namespace

bool X11NestedLoop::Run(X11Interface& owner, const std::function<bool()>& isDone)
{
    const std::shared_ptr<const bool> alive = owner.Liveness();
    while (*alive && !owner.IsWindowLost()) {
        if (isDone())
            return true;
        serveAll();
    }
    return false;
}

X11InputBlock::X11InputBlock(const X11Interface* answering)
{
    for (X11Interface* each : X11Interface::OfThread())
        if (each != answering)
            blocked.emplace_back(each, each->Liveness());
    // A press that ends by it may end others of them.
    for (const auto& [each, alive] : blocked)
        if (*alive)
            each->SetInputBlocked(true);
}

X11InputBlock::~X11InputBlock()
{
    for (const auto& [each, alive] : blocked)
        if (*alive)
            each->SetInputBlocked(false);
}

}  // namespace gui
