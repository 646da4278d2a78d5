#pragma once

#include "foundation/NotifyEvent.h"
#include "gui/Component.h"

namespace gui {

/// Fires again and again while it runs. Thread: its properties may be set on the main thread or on the render
/// thread, which hands the change over.
class Timer : public Component {
public:
    explicit Timer(UserInterface& ui);
    /// Subclasses stop their platform timer in their own destructor.
    ~Timer() override;

    Property<bool> Running{false, this};
    Property<int> Interval{1000, this};             // milliseconds; below 1 it never fires
    Property<bool> FrameSynchronized{false, this};  // once per frame where the interface is accelerated
    NotifyEvent OnElapsed;

    void propertyChanged(AbstractProperty& property) override;
    void PostedUpdate(std::intptr_t first, std::intptr_t second) override;

    virtual void StopPlatformTimer() = 0;
    virtual void StartPlatformTimer() = 0;

    /// Stops and starts again from now, if it is running.
    void Restart();
    /// Fires, unless it has been stopped. For platforms; the timer may be gone when it returns.
    void Elapse();

protected:
    /// Brings the platform's timer in line with the properties. Thread: main.
    void Apply();

private:
    friend class UserInterface;
};

}  // namespace gui
