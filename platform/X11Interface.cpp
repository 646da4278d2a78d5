#include "platform/X11Interface.h"

#include "platform/NativeX11Control.h"
#include "platform/PipeSignalGuard.h"
#include "platform/X11Clipboard.h"
#include "platform/X11FileDrop.h"
#include "platform/X11Focus.h"
#include "platform/X11Keyboard.h"
#include "platform/X11Mouse.h"
#include "platform/X11PlatformDelegate.h"
#include "platform/X11Timer.h"

#include <algorithm>
#include <mutex>

namespace gui {

namespace {

// A window that is being dragged sends moves faster than this.
constexpr std::uint32_t restMs = 100;

// A plain list: nothing of it has to be destroyed when the module goes.
std::mutex interfacesLock;
X11Interface* firstInterface = nullptr;

}  // namespace

std::vector<X11Interface*> X11Interface::OfThread()
{
    std::vector<X11Interface*> all;
    const std::lock_guard guard(interfacesLock);
    for (X11Interface* each = firstInterface; each; each = each->nextOfProcess)
        if (each->IsMainThread())
            all.push_back(each);
    return all;
}

std::unique_ptr<X11Interface> X11Interface::Open(HostLoop& loop, const Options& options, TickMs tick)
{
    auto connection = X11Connection::Open();
    if (!connection)
        return nullptr;
    const PipeSignalGuard guard;
    std::unique_ptr<X11Interface> made(new X11Interface(loop, std::move(connection), options, tick));
    return made->CreateWindow(options) ? std::move(made) : nullptr;
}

X11Interface::X11Interface(HostLoop& hostLoop, std::unique_ptr<X11Connection> opened, const Options& options,
                           TickMs tick)
    : UserInterface(std::make_unique<X11PlatformDelegate>(), tick),
      loop(hostLoop),
      connection(std::move(opened)),
      screens(std::make_unique<X11Screens>(*connection)),
      scaleIsGiven(options.scale > 0.0f),
      scaleIsUsers(OverrideScale(options.scaleSetting) > 0.0f)
{
    static_cast<X11PlatformDelegate&>(Platform()).Attach(*this);
    Backing().ReadAdjustments(options.scalingAdjustments);
    pump = std::make_unique<X11Pump>(loop, static_cast<X11Pump::Sink&>(*this));
    const std::lock_guard guard(interfacesLock);
    nextOfProcess = firstInterface;
    firstInterface = this;
}

bool X11Interface::CreateWindow(const Options& options)
{
    focus = std::make_unique<X11Focus>(*this);
    mouse = std::make_unique<X11Mouse>(*this);
    keyboard = std::make_unique<X11Keyboard>(*this);
    clipboard = std::make_unique<X11Clipboard>(*this);
    fileDrop = std::make_unique<X11FileDrop>(*this);
    control = std::make_unique<NativeX11Control>(*this);
    // The root hears of every scale.
    const float users = OverrideScale(options.scaleSetting);
    const float hosts = options.scale > 0.0f ? options.scale : screens->SmallestScale();
    Backing().SetLevel(DeviceBacking::LevelOf(scaleIsUsers ? users : hosts));
    for (X11EventHandler* handler :
         {static_cast<X11EventHandler*>(screens.get()), static_cast<X11EventHandler*>(clipboard.get()),
          static_cast<X11EventHandler*>(fileDrop.get()), static_cast<X11EventHandler*>(focus.get()),
          static_cast<X11EventHandler*>(keyboard.get()), static_cast<X11EventHandler*>(mouse.get()),
          static_cast<X11EventHandler*>(control.get())})
        AddEventHandler(*handler);
    {
        RootControl::Entry entry(*control);
        if (!control->Create(options))
            return false;
    }
    FollowMonitor();
    pump->Add(connection->Descriptor());
    pump->RunTicks(true);
    return true;
}

X11Interface::~X11Interface()
{
    const PipeSignalGuard guard;
    {
        const std::lock_guard listGuard(interfacesLock);
        X11Interface** link = &firstInterface;
        while (*link != this)
            link = &(*link)->nextOfProcess;
        *link = nextOfProcess;
    }
    *alive = false;
    BeginDestruction();
    handlers.clear();
    modals.clear();
    if (pump)
        pump->Remove(connection->Descriptor());
    pump.reset();
    // Controls of the tree may hold on to any of these.
    control.reset();
    fileDrop.reset();
    clipboard.reset();
    keyboard.reset();
    mouse.reset();
    focus.reset();
}

float X11Interface::OverrideScale(int scaleSetting) noexcept
{
    if (scaleSetting >= 100)
        return static_cast<float>(scaleSetting) * 0.01f;
    return scaleSetting == automaticScale ? 0.0f : 1.0f;
}

std::unique_ptr<Timer> X11Interface::CreateTimer() { return std::make_unique<X11Timer>(*this); }

std::uintptr_t X11Interface::GetPlatformWindow() const { return control->Window(); }

RootControl& X11Interface::GetRootControl() { return *control; }

bool X11Interface::IsActive() const
{
    if (windowLost)
        return false;
    const PipeSignalGuard guard;
    X11Connection& display = *connection;
    const xcb_window_t ours = display.TopLevelOf(control->Window());
    const auto active =
        display.GetProperty(display.RootWindow(), display.Atom(X11Atom::NetActiveWindow)).Items();
    if (!active.empty())
        return active[0] == ours;
    const X11Reply<xcb_get_input_focus_reply_t> focused(
        xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr));
    return focused && focused->focus > XCB_INPUT_FOCUS_POINTER_ROOT &&
           display.TopLevelOf(focused->focus) == ours;
}

void X11Interface::SetScale(float scale)
{
    if (scaleIsUsers || !(scale > 0.0f))
        return;
    const PipeSignalGuard guard;
    scaleIsGiven = true;
    Backing().SetLevel(DeviceBacking::LevelOf(scale));
}

void X11Interface::SetParentWindow(xcb_window_t parent)
{
    const PipeSignalGuard guard;
    control->SetParentWindow(parent);
    connection->Flush();
}

void X11Interface::Show(bool visible)
{
    const PipeSignalGuard guard;
    control->Map(visible);
    connection->Flush();
}

void X11Interface::SetEventFilter(std::function<bool(const xcb_generic_event_t&)> filter)
{
    eventFilter = std::move(filter);
}

void X11Interface::SetInputBlocked(bool blocked)
{
    inputBlocks += blocked ? 1 : -1;
    if (!blocked || inputBlocks != 1)
        return;
    const RootControl::Entry entry(*control);
    mouse->Cancel();
}

void X11Interface::RemoveEventHandler(X11EventHandler& handler) { std::erase(handlers, &handler); }

void X11Interface::EndModal(X11EventHandler& modal)
{
    RemoveEventHandler(modal);
    std::erase_if(modals, [&modal](const auto& each) { return each.get() == &modal; });
}

void X11Interface::StartTimer(X11Timer& timer)
{
    StopTimer(timer);
    timers.push_back(&timer);
}

void X11Interface::StopTimer(X11Timer& timer) { std::erase(timers, &timer); }

void X11Interface::WindowCreated(xcb_window_t window)
{
    mouse->Attach(window);
    focus->Attach(window);
    fileDrop->Attach(window);
    NotePosition();
}

void X11Interface::NotePosition()
{
    positionStale = true;
    positionTime = Clock()();
}

void X11Interface::propertyChanged(AbstractProperty& property)
{
    if (&property == &AcceptsFileDrops && fileDrop)
        fileDrop->Accept(AcceptsFileDrops.value());
    UserInterface::propertyChanged(property);
}

void X11Interface::PollModifiers()
{
    if (const auto held = keyboard->Modifiers(); held && !IsInputBlocked())
        control->WindowModifiers(FilterFlags(*held));
}

void X11Interface::CheckMonitor()
{
    if (windowLost)
        return;
    const bool rests = positionStale && Clock()() - positionTime >= restMs;
    if (!screens->TakeChange() && !rests)
        return;
    positionStale = positionStale && !rests;
    FollowMonitor();
}

bool X11Interface::IsCursorOutside() const { return !mouse->IsInside(); }

void X11Interface::FollowMonitor()
{
    const X11Screens::Monitor* monitor = screens->MonitorOf(control->ScreenRect());
    if (!monitor || *monitor == lastMonitor)
        return;
    const bool first = lastMonitor.rect.IsEmpty();
    lastMonitor = *monitor;
    if (first)
        return;
    control->OnMonitorChanged.fire(control.get());
    if (!scaleIsGiven && !scaleIsUsers)
        Backing().SetLevel(DeviceBacking::LevelOf(lastMonitor.scale));
}

void X11Interface::PumpTick()
{
    const PipeSignalGuard guard;
    const std::shared_ptr<const bool> stillAlive = alive;
    if (!windowLost) {
        RootControl::Entry entry(*control);
        Tick();
    }
    if (*stillAlive)
        FireTimers();
}

void X11Interface::PumpReadable()
{
    const PipeSignalGuard guard;
    const std::shared_ptr<const bool> stillAlive = alive;
    while (!windowLost) {
        const X11Event event = connection->NextEvent();
        if (!event)
            break;
        Dispatch(*event);
        if (!*stillAlive)
            return;
    }
    if (LoseWindow() || windowLost)
        return;
    RootControl::Entry entry(*control);
    control->PaintNow();
    connection->Flush();
}

void X11Interface::Dispatch(const xcb_generic_event_t& event)
{
    const std::shared_ptr<const bool> stillAlive = alive;
    RootControl::Entry entry(*control);
    if (eventFilter && eventFilter(event))
        return;
    // Handlers come and go while they are asked.
    for (std::size_t i = handlers.size(); *stillAlive && i-- > 0;) {
        i = std::min(i, handlers.size() - 1);
        if (handlers[i]->HandleEvent(event))
            return;
    }
}

void X11Interface::FireTimers()
{
    const std::shared_ptr<const bool> stillAlive = alive;
    const std::vector<X11Timer*> running = timers;
    for (X11Timer* timer : running) {
        // One timer may stop or delete another, or all of them.
        if (!*stillAlive || windowLost)
            return;
        if (std::find(timers.begin(), timers.end(), timer) == timers.end())
            continue;
        RootControl::Entry entry(*control);
        timer->FireIfDue();
    }
}

// True if the interface may be gone with it.
bool X11Interface::LoseWindow()
{
    if (windowLost || (!windowGone && !connection->IsLost()))
        return false;
    windowLost = true;
    // Both would call again and again with nothing to be done.
    pump->Remove(connection->Descriptor());
    pump->RunTicks(false);
    {
        RootControl::Entry entry(*control);
        control->ForgetWindow();
    }
    OnWindowLost.fire(this);
    return true;
}

}  // namespace gui
