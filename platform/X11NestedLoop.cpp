#include "platform/X11NestedLoop.h"

#include "platform/X11Interface.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace gui {

namespace {

/// An interface that a running loop keeps alive. A menu over a dialog over an editor: all three go on.
///
///     innermost -> dialog -> editor
struct Served {
    explicit Served(X11Interface& served) : interface(served), outer(innermost) { innermost = this; }
    ~Served() { innermost = outer; }
    Served(const Served&) = delete;
    Served& operator=(const Served&) = delete;

    X11Interface& interface;
    const std::shared_ptr<const bool> alive = interface.Liveness();
    Served* const outer;

    static thread_local Served* innermost;
};

thread_local Served* Served::innermost = nullptr;

/// Those of all loops, each once: a menu opens over what its dialog's loop serves already.
std::vector<Served*> allServed()
{
    std::vector<Served*> all;
    for (Served* each = Served::innermost; each; each = each->outer) {
        const auto isSame = [each](const Served* known) { return &known->interface == &each->interface; };
        if (*each->alive && std::none_of(all.begin(), all.end(), isSame))
            all.push_back(each);
    }
    return all;
}

}  // namespace

bool X11NestedLoop::Run(X11Interface& owner, const std::function<bool()>& isDone, X11Interface* dialog)
{
    const std::shared_ptr<const bool> alive = owner.Liveness();
    const Served servesOwner(owner);
    std::optional<Served> servesDialog;
    if (dialog)
        servesDialog.emplace(*dialog);
    while (*alive && !owner.IsWindowLost()) {
        if (isDone())
            return true;
        const std::vector<Served*> all = allServed();
        std::vector<X11Pump*> pumps;
        for (const Served* each : all)
            pumps.push_back(&each->interface.Pump());
        X11Pump::Wait(pumps, X11Pump::tickMs);
        for (const Served* each : all)
            if (*each->alive)
                each->interface.Pump().Serve();
    }
    return false;
}

}  // namespace gui
