#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"
#include "gui/Animation.h"
#include "gui/Component.h"
#include "gui/Lifeline.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace gui {

class Timer;

/// Names what an animation changes, as a property or a control: two animations of one key never run together.
/// Null is no key.
struct AnimationKey {
    AnimationKey() = default;
    explicit AnimationKey(const void* keyOf) : of(keyOf) {}
    const void* of = nullptr;
    friend bool operator==(AnimationKey a, AnimationKey b) { return a.of == b.of; }
};

/// Drives all animations of an interface from one timer. Thread: main or render, with the root's lock held.
class Animator : public PropertyOwner {
public:
    class UIDeleteNotifier;

    explicit Animator(UserInterface& ui);
    ~Animator() override;

    Property<bool> Enabled{false, this};
    Property<int> FramesPerSecond{10, this};
    NotifyEvent OnFrame;  // at each tick, before the animations

    /// Runs an animation from the next tick on. One that runs with the same key is stopped first.
    /// @param owner  its end, or `Cancel`, stops the animation; null for none
    void Add(std::unique_ptr<Animation> animation, Component* owner, AnimationKey key = {});
    /// Makes an animation of type `T` and adds it.
    template <class T, class... Arguments>
    T& Start(Component* owner, AnimationKey key, Arguments&&... arguments)
    {
        auto made = std::make_unique<T>(*this, std::forward<Arguments>(arguments)...);
        T& animation = *made;
        Add(std::move(made), owner, key);
        return animation;
    }

    // An animation that is stopped isn't updated any more, and its `OnFinished` doesn't fire.
    void Cancel(const Component* owner);
    void Stop(Animation& animation);
    void Stop(AnimationKey key);

    bool IsRunning(AnimationKey key) const;
    /// How many run or are about to.
    int RunningCount() const;
    /// Milliseconds of the interface's clock, as of the present step.
    std::uint32_t Now();
    Lifeline::Watch GetWatch() const { return lifeline.GetWatch(); }

    void propertyChanged(AbstractProperty& property) override;

private:
    struct Record {
        std::unique_ptr<Animation> animation;
        Component* owner;
        AnimationKey key;
    };
    using Graveyard = std::vector<std::unique_ptr<Animation>>;

    void Tick();
    template <class Predicate>
    void Remove(Predicate predicate);
    void UnlinkIfIdle(Component* owner);
    void InterfaceDeleted();

    UserInterface& userInterface;
    Lifeline lifeline;
    std::vector<Record> running;
    std::vector<Record> pending;  // added while a step runs
    // What a step stopped: it may be on the stack, so it lives until the step is over, even if the animator
    // doesn't.
    std::shared_ptr<Graveyard> graveyard = std::make_shared<Graveyard>();
    bool stepping = false;
    bool hasGaps = false;  // `running` holds records without an animation
    std::uint32_t now;
    std::unique_ptr<Timer> timer;
    UIDeleteNotifier* deleteNotifier;  // null once the interface is gone
};

}  // namespace gui
