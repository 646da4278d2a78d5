#include "platform/X11Timer.h"

#include "platform/X11Interface.h"

namespace gui {

X11Timer::X11Timer(X11Interface& ui) : Timer(ui), interface(ui) {}

X11Timer::~X11Timer() { StopPlatformTimer(); }

void X11Timer::StopPlatformTimer() { interface.StopTimer(*this); }

void X11Timer::StartPlatformTimer()
{
    due = interface.Clock()() + static_cast<std::uint32_t>(Interval.value());
    interface.StartTimer(*this);
}

void X11Timer::FireIfDue()
{
    const std::uint32_t now = interface.Clock()();
    const auto late = static_cast<std::int32_t>(now - due);
    if (late < 0)
        return;
    // Turns that were missed altogether aren't made up for.
    const int interval = Interval.value();
    due = late < interval ? due + static_cast<std::uint32_t>(interval)
                          : now + static_cast<std::uint32_t>(interval);
    Elapse();
}

}  // namespace gui
