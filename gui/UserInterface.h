#pragma once

#include "foundation/IntervalTimer.h"
#include "foundation/Lock.h"
#include "foundation/NotifyEvent.h"
#include "gui/BitmapResourceList.h"
#include "gui/Component.h"
#include "gui/DeviceBacking.h"
#include "gui/EventQueue.h"
#include "gui/PlatformDelegate.h"
#include "gui/Timer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace gui {

class Bitmap;
class Control;
class RootControl;

/// Owns what one open editor shares: scale, pictures, timers, hints and the events that other threads post. A
/// platform derives from it and makes the window. Thread: main, and render with the root's lock held.
class UserInterface : public PropertyOwner, public DeviceBacking::BackingScaleListener {
public:
    using PlatformDelegate = gui::PlatformDelegate;

    class Listener {
    public:
        virtual ~Listener() = default;
        /// One file, UTF-8 path, at a point of the root's.
        virtual void FilesDropped(Point, const std::string&) {}
        virtual void EventPosted(std::uint32_t, std::uint64_t) {}
        /// Empty when nothing is to be shown.
        virtual void HintChanged(const std::string&) {}
    };

    /// @param tick  the clock of all timing in this interface
    explicit UserInterface(std::unique_ptr<PlatformDelegate> platformDelegate, TickMs tick = systemTickMs);
    ~UserInterface() override;

    Property<bool> AcceptsFileDrops{false, this};
    NotifyEvent OnClipboardChanged;
    NotifyEvent OnTick;
    NotifyEvent OnScaleChanged;
    Property<bool> Accelerated{false, this};

    virtual std::unique_ptr<Timer> CreateTimer() = 0;
    /// The window system's handle; 0 without a window.
    virtual std::uintptr_t GetPlatformWindow() const = 0;
    virtual RootControl& GetRootControl() = 0;
    /// True if the top-level window that holds this interface is the active one.
    virtual bool IsActive() const = 0;
    /// "Ctrl", "Shift" or "Alt" for a flag of the keyboard, else empty.
    virtual std::string GetModifierName(int flag) const;

    /// Shows a hint after 1.5 s, at once where one is showing; empty takes it away.
    void SetHint(const std::string& text);
    /// The mouse left a control: its hint goes.
    void ClearHint(const Control& leaving);
    /// The hint that is showing, or that is about to.
    const std::string& Hint() const { return hintText; }
    void SetHintsEnabled(bool enabled);
    bool HintsEnabled() const { return hintsEnabled; }

    /// Thread: any; lock-free. 0 if it was dropped.
    int PostEvent(std::uint32_t code, std::uint64_t value, int queue = EventQueue::mainQueue) noexcept;
    /// Calls the component's `PostedUpdate` when the queue is drained, unless it has died. Thread: any but
    /// audio; the component must exist for the length of the call.
    void PostUpdate(Component& component, std::intptr_t first, std::intptr_t second, int queue);
    /// Tells the listeners of a file dropped at a point of the root's, UTF-8 path.
    void DropFile(Point point, const std::string& path);
    void AddListener(Listener& listener) { listeners.push_back(&listener); }
    void RemoveListener(Listener& listener);

    /// The main thread's tick, every 10 ms: modifiers, monitor, hover, queues, `OnTick`. The interface may be
    /// gone when it returns.
    void Tick();
    /// One rendered frame: the timers that are tied to it.
    void FireFrameTimers();
    void DrainQueue(int queue);

    DeviceBacking& Backing() { return backing; }
    BitmapResourceList& Bitmaps() { return *bitmapResources; }
    PlatformDelegate& Platform() { return *delegate; }
    TickMs Clock() const { return clock; }
    bool IsMainThread() const { return std::this_thread::get_id() == mainThreadId; }

    /// Painted behind all controls; null for a plain grey.
    void SetBackgroundBitmap(std::unique_ptr<Bitmap> bitmap);
    Bitmap* BackgroundBitmap() { return backgroundBitmap.get(); }
    /// Sees presses before any control; false swallows one. Empty takes it away.
    void SetMouseFilter(std::function<bool(int button, Point point, int flags)> filter);
    bool PassesMouseFilter(int button, Point point, int flags) const;

    void BackingScaleChanged() override;
    void propertyChanged(AbstractProperty& property) override;

protected:
    /// What a platform does on each tick, in this order.
    virtual void PollModifiers() {}
    virtual void CheckMonitor() {}
    /// True while the cursor lies outside of the window.
    virtual bool IsCursorOutside() const { return false; }
    /// Ends what needs the subclass while that is still whole: timers, and the components that nobody else
    /// owns. Subclasses call it first in their destructors.
    void BeginDestruction();

private:
    friend class Component;
    friend class Timer;

    struct PostedUpdateRecord {
        Component* component;
        std::intptr_t first, second;
    };

    void AddComponent(Component& component) { components.push_back(&component); }
    void RemoveComponent(Component& component);
    void AddFrameTimer(Timer& timer);
    void RemoveFrameTimer(Timer& timer);
    void RunPostedUpdates(int queue);
    bool TakePostedUpdate(int queue, PostedUpdateRecord& record);
    template <class Call>
    void TellListeners(Call call);
    void TellHint(const std::string& text);
    bool IsHintShowing() const;

    std::unique_ptr<PlatformDelegate> delegate;
    TickMs clock;
    std::thread::id mainThreadId = std::this_thread::get_id();
    DeviceBacking backing;
    BitmapResourceReference bitmapResources{new BitmapResourceList(backing)};
    std::unique_ptr<Bitmap> backgroundBitmap;
    std::vector<Component*> components;  // null entries once destruction has begun
    std::unique_ptr<CriticalSection> postedUpdatesLock = CriticalSection::create();
    std::vector<PostedUpdateRecord> postedUpdates[2];  // by queue, behind the lock
    std::vector<Timer*> frameTimers;
    std::vector<Timer*> elapsingFrameTimers;  // of the frame at hand; null once they are removed
    std::vector<Listener*> listeners;         // told from the last to the first; null once removed while told
    int tellingListeners = 0;
    std::shared_ptr<EventQueue> eventQueue = std::make_shared<EventQueue>();
    std::function<bool(int, Point, int)> mouseFilter;
    std::unique_ptr<Timer> hintTimer;
    std::string hintText;
    bool hintsEnabled = true;
    bool beingDestroyed = false;
    float lastScale = 1.0f;
};

}  // namespace gui
