#include "gui/OffscreenInterface.h"

#include <algorithm>
#include <atomic>

namespace gui {

namespace {

constexpr std::uint32_t tickMs = 10;

std::atomic<std::uint32_t> virtualNow{0};

/// Times of a clock that wraps.
std::int32_t TimeUntil(std::uint32_t time) { return static_cast<std::int32_t>(time - virtualNow); }

}  // namespace

class OffscreenInterface::OffscreenRoot : public RootControl {
public:
    explicit OffscreenRoot(OffscreenInterface& ui) : RootControl(ui), offscreen(ui) {}

    void Resized() override
    {
        offscreen.picture.SetSize(GetWidth(), GetHeight());
        Invalidate();
        RootControl::Resized();
    }

private:
    OffscreenInterface& offscreen;
};

class OffscreenInterface::OffscreenTimer : public Timer {
public:
    explicit OffscreenTimer(OffscreenInterface& ui) : Timer(ui), offscreen(ui) {}
    ~OffscreenTimer() override { OffscreenTimer::StopPlatformTimer(); }

    void StopPlatformTimer() override { std::erase(offscreen.runningTimers, this); }
    void StartPlatformTimer() override
    {
        Rearm();
        offscreen.runningTimers.push_back(this);
    }
    void Rearm() { due = virtualNow + static_cast<std::uint32_t>(Interval.value()); }

    std::uint32_t due = 0;

private:
    OffscreenInterface& offscreen;
};

OffscreenInterface::OffscreenInterface(std::unique_ptr<gui::PlatformDelegate> platformDelegate, Point size,
                                       float scale)
    : UserInterface(std::move(platformDelegate), VirtualTickMs),
      root(std::make_unique<OffscreenRoot>(*this)),
      millisecondsToTick(tickMs)
{
    const RootControl::Entry entry(*root);
    Backing().SetLevel(DeviceBacking::LevelOf(scale));
    root->SetSize(size);
}

OffscreenInterface::~OffscreenInterface()
{
    const RootControl::Entry entry(*root);
    BeginDestruction();
}

std::uint32_t OffscreenInterface::VirtualTickMs() noexcept { return virtualNow; }

std::unique_ptr<Timer> OffscreenInterface::CreateTimer() { return std::make_unique<OffscreenTimer>(*this); }

OffscreenInterface::OffscreenTimer* OffscreenInterface::NextDue() const
{
    const auto next =
        std::min_element(runningTimers.begin(), runningTimers.end(),
                         [](const auto* a, const auto* b) { return TimeUntil(a->due) < TimeUntil(b->due); });
    return next != runningTimers.end() && TimeUntil((*next)->due) <= 0 ? *next : nullptr;
}

void OffscreenInterface::FireDueTimers()
{
    const auto liveness = root->Liveness();
    while (liveness->alive) {
        OffscreenTimer* timer = NextDue();
        if (!timer)
            return;
        timer->Rearm();
        timer->Elapse();
    }
}

void OffscreenInterface::AdvanceTime(std::uint32_t milliseconds)
{
    const RootControl::Entry entry(*root);
    for (; milliseconds > 0 && entry.IsRootAlive(); --milliseconds) {
        ++virtualNow;
        FireDueTimers();
        if (!entry.IsRootAlive() || --millisecondsToTick > 0)
            continue;
        millisecondsToTick = tickMs;
        Tick();
    }
}

bool OffscreenInterface::Paint()
{
    const RootControl::Entry entry(*root);
    if (Accelerated.value())
        FireFrameTimers();
    return entry.IsRootAlive() && root->PaintDirty(picture.GetCanvas());
}

}  // namespace gui
