#pragma once

#include "gui/UserInterface.h"
#include "platform/X11Connection.h"
#include "platform/X11EventHandler.h"
#include "platform/X11Pump.h"
#include "platform/X11Screens.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gui {

class X11Clipboard;
class X11Control;
class X11FileDrop;
class X11Focus;
class X11Keyboard;
class X11Mouse;
class X11Timer;

/// An open editor, or a dialog, on an X display: it owns the connection and hands what happens there to those
/// who know what it means. When its window or the display is gone, `OnWindowLost` fires, once, and nothing
/// more happens. Thread: main.
class X11Interface : public UserInterface, private X11Pump::Sink {
public:
    struct Options {
        /// The host's window; 0 for a window of its own on the screen.
        xcb_window_t parent = XCB_WINDOW_NONE;
        Point size;  // logical units
        /// What the host says; 0 if it says nothing.
        float scale = 0.0f;
        /// The user's: 1 automatic, below 100 otherwise 1.0, from 100 on percent.
        int scaleSetting = automaticScale;
        std::string scalingAdjustments;
        /// A dialog over this window, with this title. Only without a parent.
        xcb_window_t transientFor = XCB_WINDOW_NONE;
        std::string title;
        /// What it opens over the middle of, device pixels of the screen; empty for the first monitor.
        DeviceRect over;
    };
    static constexpr int automaticScale = 1;

    /// Null if there is no display to connect to, or the window can't be made. The loop outlives it.
    static std::unique_ptr<X11Interface> Open(HostLoop& loop, const Options& options,
                                              TickMs tick = systemTickMs);
    ~X11Interface() override;

    /// All that live on this thread: editors and dialogs. The last one opened comes first.
    static std::vector<X11Interface*> OfThread();

    /// The scale that a user's setting asks for; 0 for automatic.
    static float OverrideScale(int scaleSetting) noexcept;

    /// The window or the display is gone: the argument is this. The handler may delete the interface.
    NotifyEvent OnWindowLost;
    /// A top-level window of ours was asked to close.
    NotifyEvent OnCloseRequested;

    // UserInterface
    std::unique_ptr<Timer> CreateTimer() override;
    std::uintptr_t GetPlatformWindow() const override;
    RootControl& GetRootControl() override;
    bool IsActive() const override;

    /// The host's scale, as it may change while open. Nothing happens if the user set one.
    void SetScale(float scale);
    void SetParentWindow(xcb_window_t parent);
    void Show(bool visible);
    bool IsWindowLost() const { return windowLost; }

    /// Sees every event first; true swallows it. Empty takes it away.
    void SetEventFilter(std::function<bool(const xcb_generic_event_t&)> filter);
    /// Rewrites the flags of input events. Empty takes it away.
    void SetFlagsFilter(std::function<int(int flags)> filter) { flagsFilter = std::move(filter); }
    int FilterFlags(int flags) const { return flagsFilter ? flagsFilter(flags) : flags; }

    /// While a dialog is open: mouse and keys do nothing. Each block has to be taken back.
    void SetInputBlocked(bool blocked);
    bool IsInputBlocked() const { return inputBlocks > 0; }

    // For those who make up the platform.
    X11Connection& Connection() { return *connection; }
    const X11Connection& Connection() const { return *connection; }
    X11Screens& Screens() { return *screens; }
    X11Control& Window() { return *control; }
    const X11Control& Window() const { return *control; }
    X11Mouse& Mouse() { return *mouse; }
    X11Keyboard& Keyboard() { return *keyboard; }
    X11Focus& Focus() { return *focus; }
    X11Clipboard& Clipboard() { return *clipboard; }
    X11Pump& Pump() { return *pump; }
    HostLoop& Loop() { return loop; }
    /// False once the interface is destroyed, for nested loops to look at.
    std::shared_ptr<const bool> Liveness() const { return alive; }
    /// The last one added gets an event first.
    void AddEventHandler(X11EventHandler& handler) { handlers.push_back(&handler); }
    void RemoveEventHandler(X11EventHandler& handler);
    /// What a nested loop needs: it gets all events first, and dies with the interface if that goes before
    /// the loop has ended.
    template <class T>
    T& BeginModal(std::unique_ptr<T> modal)
    {
        T& begun = *modal;
        AddEventHandler(begun);
        modals.push_back(std::move(modal));
        return begun;
    }
    void EndModal(X11EventHandler& modal);
    void StartTimer(X11Timer& timer);
    void StopTimer(X11Timer& timer);
    void WindowCreated(xcb_window_t window);
    void WindowGone() { windowGone = true; }
    /// The window may have moved: the monitor is looked up again once it rests.
    void NotePosition();

    void propertyChanged(AbstractProperty& property) override;

protected:
    void PollModifiers() override;
    void CheckMonitor() override;
    bool IsCursorOutside() const override;

private:
    X11Interface(HostLoop& hostLoop, std::unique_ptr<X11Connection> opened, const Options& options,
                 TickMs tick);
    bool CreateWindow(const Options& options);
    void PumpTick() override;
    void PumpReadable() override;
    void Dispatch(const xcb_generic_event_t& event);
    void FireTimers();
    void FollowMonitor();
    bool LoseWindow();

    HostLoop& loop;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11Screens> screens;
    std::unique_ptr<X11Focus> focus;
    std::unique_ptr<X11Mouse> mouse;
    std::unique_ptr<X11Keyboard> keyboard;
    std::unique_ptr<X11Clipboard> clipboard;
    std::unique_ptr<X11FileDrop> fileDrop;
    std::unique_ptr<X11Control> control;
    std::unique_ptr<X11Pump> pump;
    std::vector<X11EventHandler*> handlers;
    std::vector<std::unique_ptr<X11EventHandler>> modals;
    std::vector<X11Timer*> timers;
    std::function<bool(const xcb_generic_event_t&)> eventFilter;
    std::function<int(int)> flagsFilter;
    int inputBlocks = 0;
    bool scaleIsGiven;  // by the host or the user: monitors don't change it
    bool scaleIsUsers;
    bool windowGone = false;
    bool windowLost = false;
    bool positionStale = false;
    std::uint32_t positionTime = 0;  // of the last move
    X11Screens::Monitor lastMonitor;
    X11Interface* nextOfProcess = nullptr;
};

}  // namespace gui
