#include "gui/Animator.h"

#include "gui/Timer.h"
#include "gui/UserInterface.h"

#include <algorithm>

namespace gui {

/// Hears of the end of the interface, and of the owners of animations.
class Animator::UIDeleteNotifier : public Component {
public:
    UIDeleteNotifier(UserInterface& ui, Animator& notifiedAnimator)
        : Component(ui), animator(&notifiedAnimator)
    {}
    ~UIDeleteNotifier() override
    {
        if (animator)
            animator->InterfaceDeleted();
    }
    void LinkedComponentDeleted(Component& component) override
    {
        if (animator)
            animator->Cancel(&component);
    }
    void Detach() { animator = nullptr; }

private:
    Animator* animator;
};

Animator::Animator(UserInterface& ui)
    : userInterface(ui),
      now(ui.Clock()()),
      timer(ui.CreateTimer()),
      deleteNotifier(new UIDeleteNotifier(ui, *this))
{
    deleteNotifier->DeleteWithInterface();
    timer->FrameSynchronized.assign(true);
    timer->Interval.assign(1000 / FramesPerSecond.value());
    timer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) { Tick(); }));
}

Animator::~Animator()
{
    if (deleteNotifier) {
        deleteNotifier->Detach();
        delete deleteNotifier;
    }
    for (Record& record : running)
        if (record.animation)
            graveyard->push_back(std::move(record.animation));
}

void Animator::InterfaceDeleted()
{
    deleteNotifier = nullptr;
    timer.reset();
    Remove([](const Record&) { return true; });
}

void Animator::propertyChanged(AbstractProperty& property)
{
    if (!timer)
        return;
    if (&property == &FramesPerSecond)
        timer->Interval.assign(1000 / std::max(FramesPerSecond.value(), 1));
    if (&property == &Enabled)
        timer->Running.assign(Enabled.value());
}

std::uint32_t Animator::Now()
{
    // Between ticks the last one counts, so that all that starts in a frame moves together. It doesn't when
    // ticks were held back or didn't run: what starts then would begin in its middle.
    if (!stepping && deleteNotifier) {
        const std::uint32_t present = userInterface.Clock()();
        if (present - now > 2000u / static_cast<std::uint32_t>(std::max(FramesPerSecond.value(), 1)))
            now = present;
    }
    return now;
}

void Animator::Add(std::unique_ptr<Animation> animation, Component* owner, AnimationKey key)
{
    if (!deleteNotifier)
        return;
    if (key.of)
        Stop(key);
    Record record{std::move(animation), owner, key};
    if (owner)
        deleteNotifier->LinkTo(*owner);
    if (stepping)
        pending.push_back(std::move(record));
    else
        running.push_back(std::move(record));
}

template <class Predicate>
void Animator::Remove(Predicate predicate)
{
    std::vector<Component*> owners;
    const auto bury = [&](Record& record) {
        graveyard->push_back(std::move(record.animation));
        owners.push_back(record.owner);
        record.owner = nullptr;
    };
    for (Record& record : running) {
        if (record.animation && predicate(record)) {
            bury(record);
            hasGaps = true;
        }
    }
    for (Record& record : pending)
        if (record.animation && predicate(record))
            bury(record);
    std::erase_if(pending, [](const Record& record) { return !record.animation; });
    for (Component* owner : owners)
        UnlinkIfIdle(owner);
    if (stepping)
        return;
    std::erase_if(running, [](const Record& record) { return !record.animation; });
    hasGaps = false;
    // Out of the member first: what an animation's end runs may stop another.
    const Graveyard dead = std::exchange(*graveyard, {});
}

void Animator::UnlinkIfIdle(Component* owner)
{
    const auto owned = [owner](const Record& record) { return record.owner == owner; };
    if (owner && deleteNotifier && std::none_of(running.begin(), running.end(), owned) &&
        std::none_of(pending.begin(), pending.end(), owned))
        deleteNotifier->UnlinkFrom(*owner);
}

void Animator::Cancel(const Component* owner)
{
    if (owner)
        Remove([owner](const Record& record) { return record.owner == owner; });
}

void Animator::Stop(Animation& animation)
{
    Remove([&animation](const Record& record) { return record.animation.get() == &animation; });
}

void Animator::Stop(AnimationKey key)
{
    if (key.of)
        Remove([key](const Record& record) { return record.key == key; });
}

bool Animator::IsRunning(AnimationKey key) const
{
    const auto matches = [key](const Record& record) { return record.animation && record.key == key; };
    return std::any_of(running.begin(), running.end(), matches) ||
           std::any_of(pending.begin(), pending.end(), matches);
}

int Animator::RunningCount() const
{
    const auto lives = [](const Record& record) { return record.animation != nullptr; };
    return static_cast<int>(std::count_if(running.begin(), running.end(), lives) +
                            std::count_if(pending.begin(), pending.end(), lives));
}

void Animator::Tick()
{
    if (stepping)
        return;
    const Lifeline::Watch watch = lifeline.GetWatch();
    const std::shared_ptr<Graveyard> kept = graveyard;
    now = userInterface.Clock()();
    stepping = true;
    OnFrame.fire(this);
    // By index: the vector doesn't grow meanwhile, but it may be gone altogether.
    for (std::size_t i = 0; watch.IsAlive() && i < running.size(); ++i)
        if (running[i].animation)
            running[i].animation->Step();
    if (!watch.IsAlive())
        return;
    stepping = false;
    if (std::exchange(hasGaps, false))
        std::erase_if(running, [](const Record& record) { return !record.animation; });
    for (Record& record : pending)
        running.push_back(std::move(record));
    pending.clear();
    const Graveyard dead = std::exchange(*graveyard, {});
}

}  // namespace gui
