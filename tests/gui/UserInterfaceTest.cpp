#include "gui/Timer.h"
#include "support/GuiFixture.h"

#include <atomic>
#include <thread>

namespace gui {

namespace {

struct RecordingListener : UserInterface::Listener {
    void EventPosted(std::uint32_t code, std::uint64_t value) override
    {
        log.push_back(std::to_string(code) + ":" + std::to_string(value));
    }
    void HintChanged(const std::string& text) override { log.push_back("<" + text + ">"); }
    EventLog take() { return std::exchange(log, {}); }
    EventLog log;
};

}  // namespace

class UserInterfaceTest : public GuiFixture {
protected:
    UserInterfaceTest() { ui->AddListener(listener); }

    RecordingListener listener;
};

TEST_F(UserInterfaceTest, HintsComeAfterAWhileAndChangeAtOnce)
{
    ProbeControl a(*ui, &root(), {0, 0, 50, 50}, log), b(*ui, &root(), {50, 0, 100, 50}, log);
    a.HintText.assign("A");
    b.HintText.assign("B");
    move({5, 5});
    ui->AdvanceTime(1499);
    EXPECT_EQ(listener.take(), EventLog{});
    ui->AdvanceTime(1);
    EXPECT_EQ(listener.take(), EventLog{"<A>"});
    a.HintText.assign("A2");
    EXPECT_EQ(listener.take(), EventLog{"<A2>"});
    ui->AdvanceTime(5000);
    EXPECT_EQ(listener.take(), EventLog{});
    move({150, 5});
    EXPECT_EQ(listener.take(), EventLog{"<>"});
    move({55, 5});
    ui->AdvanceTime(1499);
    EXPECT_EQ(listener.take(), EventLog{});
    ui->AdvanceTime(1);
    EXPECT_EQ(listener.take(), EventLog{"<B>"});
    click({55, 5});
    EXPECT_EQ(listener.take(), EventLog{"<>"});
    ui->AdvanceTime(5000);
    EXPECT_EQ(listener.take(), EventLog{});
    // One that never showed is dropped in silence.
    move({5, 5});
    ui->AdvanceTime(1000);
    move({150, 5});
    ui->AdvanceTime(5000);
    EXPECT_EQ(listener.take(), EventLog{});
    ui->SetHintsEnabled(false);
    move({5, 5});
    ui->AdvanceTime(5000);
    EXPECT_EQ(listener.take(), EventLog{});
}

TEST_F(UserInterfaceTest, EventsAreDrainedQueueByQueueToTheLastListenerFirst)
{
    struct Second : RecordingListener {
        explicit Second(EventLog& target) : shared(target) {}
        void EventPosted(std::uint32_t code, std::uint64_t) override
        {
            shared.push_back("second " + std::to_string(code));
        }
        EventLog& shared;
    } second(listener.log);
    ui->AddListener(second);
    ui->PostEvent(1, 10);
    ui->PostEvent(2, 0xFFFFFFFFFFull, EventQueue::frameQueue);
    ui->AdvanceTime(10);
    EXPECT_EQ(listener.take(), (EventLog{"second 2", "2:1099511627775", "second 1", "1:10"}));
    ui->RemoveListener(second);
    ui->PostEvent(3, 0);
    ui->AdvanceTime(10);
    EXPECT_EQ(listener.take(), EventLog{"3:0"});
}

TEST_F(UserInterfaceTest, AFullQueueDropsEventsButNoUpdates)
{
    struct Updated : Component {
        using Component::Component;
        void PostedUpdate(std::intptr_t first, std::intptr_t second) override { sum += first * second; }
        std::intptr_t sum = 0;
    };
    Updated updated(*ui);
    int accepted = 0;
    while (ui->PostEvent(1, 0) != 0)
        ++accepted;
    EXPECT_EQ(accepted, 1024);
    ui->PostUpdate(updated, 2, 3, EventQueue::mainQueue);
    {
        Updated dying(*ui);
        ui->PostUpdate(dying, 1, 1, EventQueue::mainQueue);
    }
    ui->PostUpdate(updated, 4, 5, EventQueue::mainQueue);
    ui->AdvanceTime(10);
    EXPECT_EQ(listener.take().size(), 1024u);
    EXPECT_EQ(updated.sum, 26);
}

TEST_F(UserInterfaceTest, OtherThreadsReachTheInterface)
{
    struct Counting : Component {
        using Component::Component;
        void PostedUpdate(std::intptr_t, std::intptr_t) override { ++updates; }
        int updates = 0;
    };
    constexpr int threadCount = 3, rounds = 200;
    Counting component(*ui);
    std::atomic<int> sent{0}, running{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                sent += ui->PostEvent(7, 1, round & 1);
                ui->PostUpdate(component, 0, 0, round & 1);
            }
            --running;
        });
    while (running > 0)
        ui->AdvanceTime(10);
    for (std::thread& thread : threads)
        thread.join();
    ui->AdvanceTime(10);
    EXPECT_EQ(component.updates, threadCount * rounds);
    EXPECT_EQ(listener.log.size(), static_cast<std::size_t>(sent));
}

TEST_F(UserInterfaceTest, TimersFireEachIntervalWhileTheyRun)
{
    const auto timer = ui->CreateTimer();
    int fired = 0;
    on(timer->OnElapsed, [&] { ++fired; });
    const auto firedIn = [&](std::uint32_t milliseconds) {
        fired = 0;
        ui->AdvanceTime(milliseconds);
        return fired;
    };
    timer->Interval.assign(30);
    EXPECT_EQ(firedIn(100), 0);
    timer->Running.assign(true);
    EXPECT_EQ(firedIn(29), 0);
    EXPECT_EQ(firedIn(1), 1);
    EXPECT_EQ(firedIn(300), 10);
    timer->Interval.assign(0);
    EXPECT_EQ(firedIn(100), 0);
    timer->Interval.assign(50);
    ui->AdvanceTime(40);
    timer->Restart();
    EXPECT_EQ(firedIn(49), 0);
    EXPECT_EQ(firedIn(1), 1);
    on(timer->OnElapsed, [&] { timer->Running.assign(false); });
    EXPECT_EQ(firedIn(500), 1);
}

TEST_F(UserInterfaceTest, FrameTimersFollowTheFramesOfAnAcceleratedInterface)
{
    auto timer = ui->CreateTimer();
    auto victim = ui->CreateTimer();
    int fired = 0, victimFired = 0;
    on(timer->OnElapsed, [&] {
        ++fired;
        victim.reset();
    });
    on(victim->OnElapsed, [&] { ++victimFired; });
    for (Timer* each : {timer.get(), victim.get()}) {
        each->FrameSynchronized.assign(true);
        each->Interval.assign(1000);
        each->Running.assign(true);
    }
    ui->FireFrameTimers();
    EXPECT_EQ(fired, 0);
    ui->Accelerated.assign(true);
    ui->AdvanceTime(2000);
    EXPECT_EQ(fired, 0);
    ui->FireFrameTimers();
    ui->FireFrameTimers();
    EXPECT_EQ(fired, 2);
    EXPECT_EQ(victimFired, 0);
    ui->Accelerated.assign(false);
    ui->FireFrameTimers();
    ui->AdvanceTime(1000);
    EXPECT_EQ(fired, 3);
}

TEST_F(UserInterfaceTest, ATimerSetElsewhereStartsOnTheMainThread)
{
    const auto timer = ui->CreateTimer();
    int fired = 0;
    on(timer->OnElapsed, [&] { ++fired; });
    timer->Interval.assign(20);
    std::thread([&] {
        const RootControl::Entry entry(root());
        timer->Running.assign(true);
    }).join();
    ui->AdvanceTime(29);  // the tick at 10 starts it
    EXPECT_EQ(fired, 0);
    ui->AdvanceTime(1);
    EXPECT_EQ(fired, 1);
    // Stopped there, it fires no more, even before the main thread hears of it.
    std::thread([&] {
        const RootControl::Entry entry(root());
        timer->Running.assign(false);
    }).join();
    ui->AdvanceTime(100);
    EXPECT_EQ(fired, 1);
}

}  // namespace gui
