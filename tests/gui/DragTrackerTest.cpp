#include "gui/DragTracker.h"
#include "support/ControlsFixture.h"

namespace gui {

using DragTrackerTest = ControlsFixture;

TEST_F(DragTrackerTest, StepsFollowTheDistanceTheSpeedAndTheKeys)
{
    // speed = clamp(|delta| / max(ms, 20), 0, 0.1) x 10; factor 0.9 speed + 0.1, or 0.1 with Shift.
    struct Row {
        const char* what;
        int steps;
        float delta;
        std::uint32_t ms;
        int flags;
        bool accelerated;
        int expected;
    };
    for (const Row& row : {
             Row{"the whole range at full speed", 4096, 200, 20, 0, true, 4096},
             Row{"downwards", 4096, -200, 20, 0, true, -4096},
             Row{"fine at full speed", 4096, 200, 20, InputFlags::shift, true, 409},
             Row{"fine and slow", 4096, 200, 100000, InputFlags::shift, true, 409},
             Row{"slow: speed 0.002, factor 0.1018", 4096, 20, 100000, 0, true, 41},
             Row{"slow, but not accelerated", 4096, 20, 100000, 0, false, 409},
             Row{"few steps: no acceleration, 20 units each", 3, 39, 100000, 0, true, 1},
             Row{"few steps, a short way: 99 x 10 / 200", 99, 10, 20, 0, true, 4},
             Row{"no steps", 0, 200, 20, 0, true, 0},
         }) {
        DragTracker tracker(*ui);
        tracker.Steps.assign(row.steps);
        tracker.Accelerated.assign(row.accelerated);
        tracker.Restart();
        ui->AdvanceTime(row.ms);
        EXPECT_EQ(tracker.Track(root(), {}, row.delta, row.flags), row.expected) << row.what;
    }
}

TEST_F(DragTrackerTest, WhatIsLeftOverCountsLater)
{
    DragTracker tracker(*ui);
    tracker.Steps.assign(4);  // a step for 20 units
    int sum = 0;
    for (int i = 0; i < 75; ++i)
        sum += tracker.Track(root(), {}, 1.0f, 0);
    EXPECT_EQ(sum, 3);
}

TEST_F(DragTrackerTest, SteppedValuesSnapAndTurnAround)
{
    DragTracker tracker(*ui);
    tracker.Stepped.assign(true);
    tracker.Steps.assign(4);  // a step for 50 units, made at 30
    EXPECT_EQ(tracker.Track(root(), {}, 29, 0), 0);
    EXPECT_EQ(tracker.Track(root(), {}, 2, 0), 1);
    EXPECT_EQ(tracker.Track(root(), {}, -10, 0), 0);
    EXPECT_EQ(tracker.Track(root(), {}, -2, 0), -1);
}

TEST_F(DragTrackerTest, ADoubleClickShakesNothing)
{
    struct Row {
        const char* what;
        Point point;
        std::uint32_t ms;
        bool doubleClick;
        bool moves;
    };
    for (const Row& row :
         {Row{"near and soon", {4, -4}, 400, true, false}, Row{"far", {4.01f, 0}, 0, true, true},
          Row{"late", {0, 2}, 401, true, true}, Row{"no double-click", {0, 2}, 0, false, true}}) {
        Control control(*ui, &root());
        control.DoubleClickEnabled.assign(row.doubleClick);
        DragTracker tracker(*ui);
        tracker.Restart({0, 0});
        ui->AdvanceTime(row.ms);
        EXPECT_EQ(tracker.Track(control, row.point, 10, 0) != 0, row.moves) << row.what;
    }
}

TEST_F(DragTrackerTest, TheFirstNotchOfADirectionMovesFewSteps)
{
    DragTracker tracker(*ui);
    tracker.Steps.assign(3);
    EXPECT_EQ(tracker.WheelSteps(0.001f, 1, 0), 1);  // 0.04 of a step, but the first
    EXPECT_EQ(tracker.WheelSteps(0.001f, 1, 0), 0);
    EXPECT_EQ(tracker.WheelSteps(0.001f, 30, 0), 1);  // 0.04 + 1.2
    EXPECT_EQ(tracker.WheelSteps(-0.001f, -1, 0), -1);
    EXPECT_EQ(tracker.WheelSteps(0, 60, 0), 2);
}

TEST_F(DragTrackerTest, ManyStepsFollowTheSpeedOfTheWheel)
{
    DragTracker tracker(*ui);
    EXPECT_EQ(tracker.WheelSteps(0.1f, 30, 0), 409);  // 409.6
    EXPECT_EQ(tracker.WheelSteps(0.1f, 30, 0), 410);  // and what was left
    tracker.Restart();
    EXPECT_EQ(tracker.WheelSteps(-0.1f, -30, InputFlags::shift), -40);
    tracker.Restart();
    tracker.WheelScale.assign(0.5f);
    EXPECT_EQ(tracker.WheelSteps(0.1f, 30, 0), 204);
}

}  // namespace gui
