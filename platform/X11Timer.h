#pragma once

#include "gui/Timer.h"

#include <cstdint>

namespace gui {

class X11Interface;

/// A timer that goes by the ticks of its interface: it fires at the first tick at or after its time.
class X11Timer : public Timer {
public:
    explicit X11Timer(X11Interface& ui);
    ~X11Timer() override;

    void StopPlatformTimer() override;
    void StartPlatformTimer() override;
    /// May delete the timer.
    void FireIfDue();

private:
    X11Interface& interface;
    std::uint32_t due = 0;
};

}  // namespace gui
