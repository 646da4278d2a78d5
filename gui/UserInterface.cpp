#include "gui/UserInterface.h"

#include "foundation/Tolerance.h"
#include "gui/Bitmap.h"
#include "gui/RootControl.h"

#include <algorithm>

namespace gui {

namespace {

constexpr int hintDelayMs = 1500;

}  // namespace

UserInterface::UserInterface(std::unique_ptr<gui::PlatformDelegate> platformDelegate, TickMs tick)
    : delegate(std::move(platformDelegate)), clock(tick)
{
    backing.AddListener(*this);
}

UserInterface::~UserInterface()
{
    beingDestroyed = true;
    backing.RemoveListener(*this);
}

void UserInterface::BeginDestruction()
{
    beingDestroyed = true;
    for (std::size_t i = components.size(); i-- > 0;) {
        if (components[i] && components[i]->deletedWithInterface)
            delete components[i];
    }
    GetRootControl().ReleaseTimers();
    hintTimer.reset();
}

std::string UserInterface::GetModifierName(int flag) const
{
    switch (flag) {
    case InputFlags::ctrl:
        return "Ctrl";
    case InputFlags::shift:
        return "Shift";
    case InputFlags::alt:
        return "Alt";
    default:
        return {};
    }
}

void UserInterface::RemoveComponent(Component& component)
{
    // Those made last die first, as a rule.
    const auto found = std::find(components.rbegin(), components.rend(), &component);
    if (found != components.rend()) {
        if (beingDestroyed)
            *found = nullptr;
        else
            components.erase(std::next(found).base());
    }
    const ScopedLock scopedLock(*postedUpdatesLock);
    for (auto& records : postedUpdates)
        std::erase_if(records, [&](const auto& record) { return record.component == &component; });
}

void UserInterface::RemoveListener(Listener& listener)
{
    if (tellingListeners == 0)
        std::erase(listeners, &listener);
    else
        std::replace(listeners.begin(), listeners.end(), &listener, static_cast<Listener*>(nullptr));
}

template <class Call>
void UserInterface::TellListeners(Call call)
{
    const auto liveness = GetRootControl().Liveness();
    ++tellingListeners;
    for (std::size_t i = listeners.size(); i-- > 0;) {
        if (listeners[i])
            call(*listeners[i]);
        if (!liveness->alive)
            return;
    }
    if (--tellingListeners == 0)
        std::erase(listeners, nullptr);
}

void UserInterface::DropFile(Point point, const std::string& path)
{
    TellListeners([&](Listener& listener) { listener.FilesDropped(point, path); });
}

// Hints

bool UserInterface::IsHintShowing() const
{
    return !hintText.empty() && !(hintTimer && hintTimer->Running.value());
}

void UserInterface::TellHint(const std::string& text)
{
    const std::string told = text;  // a listener may set another one
    TellListeners([&](Listener& listener) { listener.HintChanged(told); });
}

void UserInterface::SetHintsEnabled(bool enabled)
{
    if (!enabled)
        SetHint({});
    hintsEnabled = enabled;
}

void UserInterface::SetHint(const std::string& text)
{
    if (!hintsEnabled || beingDestroyed)
        return;
    const bool hadText = !hintText.empty();
    const bool wasShowing = IsHintShowing();
    hintText = text;
    if (text.empty()) {
        if (hintTimer)
            hintTimer->Running.assign(false);
        if (hadText)
            TellHint(text);
        return;
    }
    if (wasShowing)
        return TellHint(text);
    if (!hintTimer) {
        hintTimer = CreateTimer();
        hintTimer->Interval.assign(hintDelayMs);
        hintTimer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) {
            hintTimer->Running.assign(false);
            TellHint(hintText);
        }));
    }
    hintTimer->Running.assign(true);
    hintTimer->Restart();
}

void UserInterface::ClearHint(const Control& leaving)
{
    if (leaving.HintText.value().empty() || !hintTimer || !hintsEnabled || beingDestroyed)
        return;
    const bool wasShowing = IsHintShowing();
    hintTimer->Running.assign(false);
    hintText.clear();
    if (wasShowing)
        TellHint(hintText);
}

// Events of other threads

int UserInterface::PostEvent(std::uint32_t code, std::uint64_t value, int queue) noexcept
{
    return eventQueue->Push(queue, {code, value});
}

void UserInterface::PostUpdate(Component& component, std::intptr_t first, std::intptr_t second, int queue)
{
    const ScopedLock scopedLock(*postedUpdatesLock);
    auto& records = postedUpdates[queue];
    records.push_back({&component, first, second});
    // One marker is enough for all that wait. A drain looks for them at its end too, as the queue may be
    // full.
    if (records.size() == 1)
        eventQueue->Push(queue, {EventQueue::postedUpdates, 0});
}

bool UserInterface::TakePostedUpdate(int queue, PostedUpdateRecord& record)
{
    const ScopedLock scopedLock(*postedUpdatesLock);
    auto& records = postedUpdates[queue];
    if (records.empty())
        return false;
    record = records.front();
    records.erase(records.begin());
    return true;
}

void UserInterface::RunPostedUpdates(int queue)
{
    const auto liveness = GetRootControl().Liveness();
    PostedUpdateRecord record{};
    while (liveness->alive && TakePostedUpdate(queue, record))
        record.component->PostedUpdate(record.first, record.second);
}

void UserInterface::DrainQueue(int queue)
{
    const auto liveness = GetRootControl().Liveness();
    const auto keptQueue = eventQueue;  // a handler may destroy the interface
    EventQueue::Entry entry;
    while (liveness->alive && keptQueue->Pop(queue, entry)) {
        if (entry.code == EventQueue::postedUpdates) {
            RunPostedUpdates(queue);
            continue;
        }
        TellListeners([&](Listener& listener) { listener.EventPosted(entry.code, entry.value); });
    }
    if (liveness->alive)
        RunPostedUpdates(queue);
}

// Timers

void UserInterface::AddFrameTimer(Timer& timer) { frameTimers.push_back(&timer); }

void UserInterface::RemoveFrameTimer(Timer& timer)
{
    std::erase(frameTimers, &timer);
    std::replace(elapsingFrameTimers.begin(), elapsingFrameTimers.end(), &timer,
                 static_cast<Timer*>(nullptr));
}

void UserInterface::FireFrameTimers()
{
    const auto liveness = GetRootControl().Liveness();
    elapsingFrameTimers = frameTimers;
    for (std::size_t i = 0; liveness->alive && i < elapsingFrameTimers.size(); ++i) {
        if (Timer* timer = elapsingFrameTimers[i])
            timer->Elapse();
    }
    if (liveness->alive)
        elapsingFrameTimers.clear();
}

void UserInterface::propertyChanged(AbstractProperty& property)
{
    if (&property != &Accelerated)
        return;
    for (Component* component : components) {
        auto* timer = dynamic_cast<Timer*>(component);
        if (timer && timer->FrameSynchronized.value())
            timer->Apply();
    }
}

void UserInterface::Tick()
{
    const RootControl::Entry entry(GetRootControl());
    const auto step = [&](auto&& work) {
        if (entry.IsRootAlive())
            work();
    };
    step([&] { PollModifiers(); });
    step([&] { CheckMonitor(); });
    step([&] {
        RootControl& root = GetRootControl();
        if (root.IsHovered() && !root.CapturedControl() && IsCursorOutside())
            root.SetHover(nullptr);
    });
    step([&] { DrainQueue(EventQueue::frameQueue); });
    step([&] { DrainQueue(EventQueue::mainQueue); });
    step([&] { OnTick.fire(this); });
}

// Scale and the root's surroundings

void UserInterface::BackingScaleChanged()
{
    RootControl& root = GetRootControl();
    const auto liveness = root.Liveness();
    root.BackingScaleChanged();
    if (!liveness->alive)
        return;
    const float scale = backing.Scale();
    const float oldScale = lastScale;
    if (!isNear(scale, oldScale)) {
        lastScale = scale;
        OnScaleChanged.fire(this);
        if (!liveness->alive)
            return;
    }
    root.FitToScale(oldScale, scale);
}

void UserInterface::SetBackgroundBitmap(std::unique_ptr<Bitmap> bitmap)
{
    backgroundBitmap = std::move(bitmap);
    GetRootControl().Invalidate();
}

void UserInterface::SetMouseFilter(std::function<bool(int button, Point point, int flags)> filter)
{
    mouseFilter = std::move(filter);
}

bool UserInterface::PassesMouseFilter(int button, Point point, int flags) const
{
    const auto filter = mouseFilter;  // it may take itself away
    return !filter || filter(button, point, flags);
}

}  // namespace gui
