#include "gui/Timer.h"

#include "gui/EventQueue.h"
#include "gui/UserInterface.h"

namespace gui {

Timer::Timer(UserInterface& ui) : Component(ui) {}

Timer::~Timer() { userInterface.RemoveFrameTimer(*this); }

void Timer::propertyChanged(AbstractProperty&) { Restart(); }

void Timer::PostedUpdate(std::intptr_t, std::intptr_t) { Apply(); }

void Timer::Restart()
{
    if (userInterface.IsMainThread())
        Apply();
    else
        userInterface.PostUpdate(*this, 0, 0, EventQueue::mainQueue);
}

void Timer::Elapse()
{
    // A stop that the render thread asked for may still be on its way.
    if (Running.value())
        OnElapsed.fire(this);
}

void Timer::Apply()
{
    userInterface.RemoveFrameTimer(*this);
    StopPlatformTimer();
    if (!Running.value() || Interval.value() < 1)
        return;
    if (FrameSynchronized.value() && userInterface.Accelerated.value())
        userInterface.AddFrameTimer(*this);
    else
        StartPlatformTimer();
}

}  // namespace gui
