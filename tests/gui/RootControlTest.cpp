#include "gui/Timer.h"
#include "support/GuiFixture.h"

#include <thread>

namespace gui {

using RootControlTest = GuiFixture;

TEST_F(RootControlTest, AWheelStaysWithItsControlUntilTheMouseMovesOn)
{
    ProbeControl a(*ui, &root(), {0, 0, 50, 50}, log, "a"), b(*ui, &root(), {50, 0, 100, 50}, log, "b");
    a.takesWheel = true;
    move({48, 10});
    EXPECT_TRUE(scroll({48, 10}));
    EXPECT_EQ(root().CapturedControl(), &a);
    EXPECT_EQ(a.GetCaptureMode(), Control::CaptureMode::Wheel);
    EXPECT_EQ(takeLog(), (EventLog{"a enter", "a scroll0", "a scroll1"}));
    move({52, 10});  // 4 units
    EXPECT_EQ(root().CapturedControl(), &a);
    EXPECT_TRUE(scroll({52, 10}));
    EXPECT_EQ(takeLog(), EventLog{"a scroll1"});
    move({52.01f, 10});
    EXPECT_EQ(root().CapturedControl(), nullptr);
    // The gesture ends with the capture, and the mouse goes on to where it is.
    EXPECT_EQ(takeLog(), (EventLog{"a scroll2", "a released", "a leave", "b enter"}));
    EXPECT_FALSE(scroll({60, 10}));
}

TEST_F(RootControlTest, AGestureEndsAfterHalfASecond)
{
    ProbeControl panel(*ui, &root(), {0, 0, 100, 100}, log, "panel");
    ProbeControl inert(*ui, &panel, {0, 0, 50, 50}, log, "inert");
    panel.takesWheel = true;
    move({5, 5});
    takeLog();
    EXPECT_FALSE(scroll({5, 5}, {1, 1}, {0, 0}));
    EXPECT_TRUE(scroll({5, 5}, {-3, 2}));  // velocities are limited
    EXPECT_EQ(panel.lastVelocity, (Point{-1, 1}));
    ui->AdvanceTime(499);
    EXPECT_TRUE(scroll({5, 5}));
    EXPECT_EQ(takeLog(), (EventLog{"panel scroll0", "panel scroll1", "panel scroll1"}));
    ui->AdvanceTime(500);
    EXPECT_EQ(takeLog(), EventLog{"panel scroll2"});
    scroll({5, 5});
    release({5, 5});
    EXPECT_EQ(takeLog(),
              (EventLog{"panel scroll0", "panel scroll1", "panel scroll2", "inert leave", "panel released"}));
}

TEST_F(RootControlTest, WheelEventsGoStepByStepThroughTheAxes)
{
    class Wheel : public Control {
    public:
        using Control::Control;
        bool WheelStep(Point, int, float velocity, Orientation axis) override
        {
            return add(axis == Orientation::Horizontal ? "stepX" : "stepY", velocity);
        }
        bool WheelDelta(Point, int, float delta, Orientation axis) override
        {
            return add(axis == Orientation::Horizontal ? "deltaX" : "deltaY", delta);
        }
        bool Zoomed(ScrollPhase, Point, int, float magnitude) override { return add("zoom", magnitude); }
        bool add(const char* what, float amount)
        {
            heard.push_back(what + std::string(" ") + std::to_string(static_cast<int>(amount)));
            return heard.size() == takesAt;
        }
        EventLog heard;
        std::size_t takesAt = 0;
    };
    struct Row {
        Point velocity, delta;
        int flags;
        std::size_t takesAt;
        bool handled;
        EventLog heard;
    };
    Wheel wheel(*ui);
    for (const Row& row :
         {Row{{1, 2}, {3, 4}, 0, 0, false, {"stepX 1", "stepY 2", "deltaX 3", "deltaY 4"}},
          Row{{0, 2}, {0, 4}, 0, 0, false, {"stepY 2", "deltaY 4"}},
          Row{{1, 2}, {3, 4}, 0, 3, true, {"stepX 1", "stepY 2", "deltaX 3"}},
          Row{{0, 2}, {0, 0}, InputFlags::ctrl, 2, true, {"stepY 2", "zoom 7"}},
          Row{{0, 2}, {0, 0}, InputFlags::ctrl | InputFlags::shift, 2, false, {"stepY 2"}}}) {
        wheel.heard.clear();
        wheel.takesAt = row.takesAt;
        EXPECT_EQ(
            wheel.ScrollEvent(0, Control::ScrollPhase::Change, {}, row.flags, row.velocity, row.delta, 7),
            row.handled);
        EXPECT_EQ(wheel.heard, row.heard);
    }
    wheel.heard.clear();
    wheel.ScrollEvent(1, Control::ScrollPhase::Begin, {}, 0, {1, 1}, {1, 1}, 7);
    EXPECT_EQ(wheel.heard, EventLog{"zoom 7"});
}

TEST_F(RootControlTest, CaptureChangesAreToldOnce)
{
    ProbeControl probe(*ui, &root(), {0, 0, 50, 50}, log);
    int told = 0;
    on(root().OnCaptureChanged, [&] { ++told; });
    root().SetCapture(nullptr);
    EXPECT_EQ(told, 0);
    root().SetCapture(&probe);
    root().SetCapture(&probe);
    EXPECT_EQ(told, 1);
    root().SetCapture(nullptr);
    EXPECT_EQ(told, 2);
    EXPECT_EQ(takeLog(), EventLog{"released"});
}

TEST_F(RootControlTest, AMouseFilterSwallowsPresses)
{
    ProbeControl probe(*ui, &root(), {0, 0, 50, 50}, log);
    int seen = 0;
    ui->SetMouseFilter([&](int, Point, int) {
        ui->SetMouseFilter({});  // the first only
        ++seen;
        return false;
    });
    press({5, 5});
    EXPECT_EQ(root().CapturedControl(), nullptr);
    press({5, 5});
    EXPECT_EQ(root().CapturedControl(), &probe);
    EXPECT_EQ(seen, 1);
}

TEST_F(RootControlTest, TheLockIsFreeWhileItIsSuspended)
{
    const auto isFree = [&] {
        std::atomic<bool> entered{false};
        std::thread other([&] {
            const RootControl::Entry entry(root());
            entered = true;
        });
        other.join();
        return entered.load();
    };
    EXPECT_EQ(root().SuspendLock(), 0);
    const RootControl::Entry outer(root());
    const RootControl::Entry inner(root());
    {
        const RootControl::Suspension suspension(root());
        EXPECT_TRUE(isFree());
        EXPECT_EQ(root().SuspendLock(), 0);
    }
    EXPECT_EQ(root().SuspendLock(), 2);
    EXPECT_TRUE(isFree());
    root().ResumeLock(2);
}

TEST_F(RootControlTest, TheRootMayDieWhileItsLockIsSuspended)
{
    RootControl& entered = root();
    const RootControl::Entry outer(entered);
    {
        const RootControl::Entry inner(entered);
        const RootControl::Suspension suspension(entered);
        ui.reset();  // by a message of the nested loop
        EXPECT_FALSE(suspension.IsRootAlive());
    }
    EXPECT_FALSE(outer.IsRootAlive());
    // Neither end touches what is gone; the memory checkers judge that. An exception leaves it the same way.
    ui = std::make_unique<OffscreenInterface>(std::make_unique<PlainPlatform>(), Point{200, 100});
    const RootControl::Entry entry(root());
    try {
        const RootControl::Suspension suspension(root());
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(root().SuspendLock(), 1);
    root().ResumeLock(1);
}

TEST_F(RootControlTest, HandlersOfALostCaptureMayTakeOrDeleteWhatWasToGetIt)
{
    class Loser : public Control {
    public:
        using Control::Control;
        void CaptureReleased() override { Control::CaptureReleased(), work(); }
        std::function<void()> work;
    } loser(*ui, &root());
    Control other(*ui, &root());
    auto wanted = std::make_unique<Control>(*ui, &root());
    int told = 0;
    on(root().OnCaptureChanged, [&] { ++told; });
    root().SetCapture(&loser);
    loser.work = [&] { root().SetCapture(&other); };
    root().SetCapture(wanted.get());
    EXPECT_EQ(root().CapturedControl(), &other);
    EXPECT_EQ(told, 2);
    root().SetCapture(&loser);
    loser.work = [&] { wanted.reset(); };
    root().SetCapture(wanted.get());
    EXPECT_EQ(root().CapturedControl(), nullptr);
    EXPECT_EQ(told, 4);
}

TEST_F(RootControlTest, FullScreenIsToldBeforeTheScaleChanges)
{
    ui->Backing().SetDefaultFullScreenLevel(4);  // 2.0
    EventLog events;
    on(root().OnFullScreenChanging, [&] { events.push_back("changing"); });
    on(ui->OnScaleChanged, [&] { events.push_back("scale " + std::to_string(ui->Backing().Scale())); });
    root().FullScreen.assign(true);
    EXPECT_EQ(events, (EventLog{"changing", "scale 2.000000"}));
    EXPECT_EQ(root().GetSize(), (Point{200, 100}));
    // A change of the level in full screen keeps the window's pixels: half the units at twice the scale.
    ui->Backing().SetDefaultFullScreenLevel(0);
    EXPECT_EQ(root().GetSize(), (Point{400, 200}));
}

}  // namespace gui
