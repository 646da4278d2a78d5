#include "support/GuiFixture.h"

namespace gui {

using ControlInput = GuiFixture;

TEST_F(ControlInput, HitTestingAsksForVisibilityRectangleAndAlpha)
{
    // A point hits where alpha x opacity exceeds 240 x 255: with a full alpha from an opacity of 241.
    struct Row {
        const char* what;
        Point point;
        int alpha = 255, opacity = 255, threshold = 240;
        bool visible = true, enabled = true;
        bool hits = true;
    };
    for (const Row& row :
         {Row{"inside", {15, 15}}, Row{"left and top belong to it", {10, 10}},
          Row{.what = "right doesn't", .point = {30, 15}, .hits = false},
          Row{.what = "bottom doesn't", .point = {15, 30}, .hits = false},
          Row{.what = "opacity 241", .point = {15, 15}, .opacity = 241},
          Row{.what = "opacity 240", .point = {15, 15}, .opacity = 240, .hits = false},
          Row{.what = "alpha 240", .point = {15, 15}, .alpha = 240, .hits = false},
          Row{.what = "threshold 0", .point = {15, 15}, .alpha = 1, .threshold = 0},
          Row{.what = "no alpha", .point = {15, 15}, .alpha = 0, .threshold = 0, .hits = false},
          Row{.what = "hidden", .point = {15, 15}, .visible = false, .hits = false},
          Row{.what = "disabled", .point = {15, 15}, .enabled = false, .hits = false}}) {
        ProbeControl probe(*ui, &root(), {10, 10, 30, 30}, log);
        probe.alpha = row.alpha;
        probe.Opacity.assign(row.opacity);
        probe.HitThreshold.assign(row.threshold);
        probe.Visible.assign(row.visible);
        probe.Enabled.assign(row.enabled);
        EXPECT_EQ(root().HitChild(row.point), row.hits ? &probe : nullptr) << row.what;
    }
}

TEST_F(ControlInput, TheLastChildIsOnTop)
{
    ProbeControl below(*ui, &root(), {0, 0, 20, 20}, log), above(*ui, &root(), {0, 0, 20, 20}, log);
    EXPECT_EQ(root().HitChild({5, 5}), &above);
    EXPECT_EQ(root().SetChildIndex(below, 1), 1);
    EXPECT_EQ(root().HitChild({5, 5}), &below);
    EXPECT_EQ(root().SetChildIndex(below, 2), 2);  // past the end: refused
    EXPECT_EQ(root().SetChildIndex(root(), 0), 2);
    EXPECT_EQ(root().Children(), (std::vector<Control*>{&above, &below}));
}

TEST_F(ControlInput, ThePressedControlKeepsTheMouseUntilTheRelease)
{
    ProbeControl panel(*ui, &root(), {50, 50, 150, 90}, log);
    ProbeControl knob(*ui, &panel, {10, 10, 30, 30}, log);
    press({65, 65});
    EXPECT_EQ(root().CapturedControl(), &knob);
    EXPECT_EQ(knob.GetCaptureMode(), Control::CaptureMode::Button);
    EXPECT_TRUE(root().IsLeftDown());
    move({0, 0});
    EXPECT_EQ(knob.LastPosition(), (Point{-60, -60}));
    release({0, 0});
    EXPECT_EQ(root().CapturedControl(), nullptr);
    EXPECT_FALSE(root().IsLeftDown());
    EXPECT_EQ(log, (EventLog{"enter", "enter", "released"}));  // no click out there
}

TEST_F(ControlInput, ClickClasses)
{
    struct Row {
        const char* what;
        bool doubleEnabled, waits;
        int secondFlags;
        EventLog expected;
    };
    for (const Row& row :
         {Row{"a click and a slow second", true, false, 0, {"click", "click"}},
          Row{"a double-click", true, false, InputFlags::doubleClick, {"click", "double"}},
          Row{"two clicks where doubles are off", false, false, InputFlags::doubleClick, {"click", "click"}},
          Row{"a second click tells of the first", true, true, 0, {"click", "single", "click", "single"}},
          Row{"a double-click leaves no single", true, true, InputFlags::doubleClick, {"click", "double"}}}) {
        ProbeControl probe(*ui, &root(), {0, 0, 20, 20}, log);
        probe.DoubleClickEnabled.assign(row.doubleEnabled);
        probe.WaitsForDoubleClick.assign(row.waits);
        click({5, 5});
        click({5, 5}, row.secondFlags);
        ui->AdvanceTime(400);
        std::erase_if(log, [](const std::string& what) { return what == "enter" || what == "released"; });
        EXPECT_EQ(takeLog(), row.expected) << row.what;
    }
}

TEST_F(ControlInput, ASingleClickIsToldOnceADoubleIsRuledOut)
{
    ProbeControl probe(*ui, &root(), {0, 0, 20, 20}, log);
    probe.WaitsForDoubleClick.assign(true);
    struct Row {
        int waitMs;
        Point moveTo;
        bool told;
    };
    for (const Row& row : {Row{399, {5, 5}, false}, Row{400, {5, 5}, true}, Row{0, {10, 5}, false},
                           Row{0, {10.5f, 5}, true}, Row{0, {5, 10.5f}, true}}) {
        click({5, 5});
        takeLog();
        ui->AdvanceTime(static_cast<std::uint32_t>(row.waitMs));
        move(row.moveTo);
        EXPECT_EQ(takeLog() == EventLog{"single"}, row.told) << row.waitMs << " " << row.moveTo.x;
        ui->AdvanceTime(400);
    }
}

TEST_F(ControlInput, ReleasesOnNothingAndRightButtons)
{
    ProbeControl probe(*ui, &root(), {0, 0, 20, 20}, log);
    move({5, 5});
    takeLog();
    press({5, 5});
    probe.alpha = 240;
    release({5, 5});
    EXPECT_EQ(takeLog(), EventLog{"released"});
    probe.alpha = 255;
    press({5, 5}, 0, MouseButton::right);
    release({5, 5}, 0, MouseButton::right);
    EXPECT_EQ(takeLog(), EventLog{"right"});
    // The modifier that makes a left press a right one, whatever is held at the release.
    press({5, 5}, InputFlags::secondaryClick);
    EXPECT_EQ(root().CapturedControl(), nullptr);
    EXPECT_EQ(probe.Flags() & InputFlags::secondaryClick, 0);
    release({5, 5});
    EXPECT_EQ(takeLog(), EventLog{"right"});
    press({5, 5});
    root().CapturedControl()->CancelMouse();
    EXPECT_EQ(takeLog(), EventLog{"released"});
}

TEST_F(ControlInput, HoverEntersAndLeavesFromTheOutsideIn)
{
    ProbeControl panel(*ui, &root(), {0, 0, 100, 100}, log, "panel");
    ProbeControl a(*ui, &panel, {0, 0, 20, 20}, log, "a"), b(*ui, &panel, {20, 0, 40, 20}, log, "b");
    move({5, 5});
    EXPECT_EQ(takeLog(), (EventLog{"panel enter", "a enter"}));
    EXPECT_TRUE(a.IsInnermostHovered() && panel.IsHovered() && !panel.IsInnermostHovered());
    move({25, 5});
    EXPECT_EQ(takeLog(), (EventLog{"a leave", "b enter"}));
    ui->SetCursorOutside(true);
    ui->AdvanceTime(10);
    EXPECT_EQ(takeLog(), (EventLog{"b leave", "panel leave"}));
    ui->SetModifiers(InputFlags::ctrl);  // no move for those whom the mouse has left
    ui->AdvanceTime(10);
    EXPECT_EQ(takeLog(), EventLog{});
    ui->SetCursorOutside(false);
    move({25, 5});
    ui->SetModifiers(InputFlags::shift);
    ui->AdvanceTime(10);
    EXPECT_EQ(b.Flags(), InputFlags::shift);
}

TEST_F(ControlInput, AMovableControlFollowsTheMouseWithinItsParent)
{
    ProbeControl probe(*ui, &root(), {50, 50, 70, 70}, log);
    probe.Movable.assign(true);
    struct Row {
        Point mouse, position;
    };
    press({55, 55});
    // The grabbed point, 5 from the top left, stays within 200 x 100.
    for (const Row& row : {Row{{59, 51}, {50, 50}}, Row{{59.1f, 55}, {54.1f, 50}}, Row{{56, 57}, {51, 52}},
                           Row{{-20, 300}, {-5, 95}}, Row{{300, -1}, {195, -5}}}) {
        move(row.mouse);
        EXPECT_NEAR(probe.GetLeft(), row.position.x, 0.001f) << row.mouse.x;
        EXPECT_NEAR(probe.GetTop(), row.position.y, 0.001f) << row.mouse.y;
    }
    takeLog();
    release({199, 0});
    EXPECT_EQ(takeLog(), EventLog{"released"});  // a drag is no click
    // A drag whose capture is taken away is over, also where the release goes elsewhere.
    press({199, 0});
    move({150, 50});
    root().SetCapture(nullptr);
    const Rect left = probe.GetBounds();
    move({155, 55});
    EXPECT_EQ(probe.GetBounds(), left);
}

TEST_F(ControlInput, WhatIsHiddenOrDisabledLosesTheMouseAtOnce)
{
    ProbeControl panel(*ui, &root(), {0, 0, 100, 100}, log, "panel");
    ProbeControl child(*ui, &panel, {0, 0, 50, 50}, log, "child");
    child.HintText.assign("a hint");
    for (Property<bool>* property : {&child.Visible, &child.Enabled, &panel.Visible, &panel.Enabled}) {
        const bool wholePanel = property == &panel.Visible || property == &panel.Enabled;
        move({5, 5});
        ui->AdvanceTime(1500);
        EXPECT_EQ(ui->Hint(), "a hint");
        press({5, 5});
        takeLog();
        property->assign(false);
        EventLog expected{"child released", "child leave"};
        if (wholePanel)
            expected.push_back("panel leave");
        EXPECT_EQ(takeLog(), expected);
        EXPECT_EQ(root().CapturedControl(), nullptr);
        EXPECT_TRUE(wholePanel ? root().IsInnermostHovered() : panel.IsInnermostHovered());
        property->assign(true);
        release({5, 5});  // completes no click
        EXPECT_EQ(takeLog(), wholePanel ? (EventLog{"panel enter", "child enter"}) : EventLog{"child enter"});
        move({5, 5});
        ui->AdvanceTime(1500);
        EXPECT_EQ(ui->Hint(), "a hint");
        property->assign(false);
        EXPECT_EQ(ui->Hint(), "");
        property->assign(true);
        move({150, 5});
        takeLog();
    }
}

TEST_F(ControlInput, KeysGoToTheInnermostPressedFirst)
{
    ProbeControl panel(*ui, &root(), {0, 0, 100, 100}, log, "panel");
    ProbeControl a(*ui, &panel, {0, 0, 20, 20}, log, "a"), b(*ui, &panel, {20, 0, 40, 20}, log, "b");
    click({5, 5});
    takeLog();
    a.takenKey = KeyCode::up;
    EXPECT_TRUE(root().WindowKey(KeyCode::up, 0, 0));
    EXPECT_EQ(takeLog(), EventLog{"a key"});
    EXPECT_FALSE(root().WindowKey(KeyCode::down, 0, 0));
    EXPECT_EQ(takeLog(), (EventLog{"a key", "panel key"}));
    // What nobody takes ends a capture, but not that of a held button.
    root().SetCapture(&b);
    root().WindowKey(KeyCode::down, 0, 0);
    EXPECT_EQ(root().CapturedControl(), nullptr);
    press({5, 5});
    root().WindowKey(KeyCode::down, 0, 0);
    EXPECT_EQ(root().CapturedControl(), &a);
}

TEST_F(ControlInput, ADragIsHandedOver)
{
    ProbeControl strip(*ui, &root(), {0, 0, 200, 50}, log, "strip");
    ProbeControl cell(*ui, &strip, {0, 0, 50, 50}, log, "cell");
    press({10, 10});
    takeLog();
    cell.HandOverMouse(strip, {10, 10}, {18, 10}, InputFlags::leftButton);
    EXPECT_EQ(takeLog(), (EventLog{"cell released", "cell leave"}));
    EXPECT_EQ(root().CapturedControl(), &strip);
    EXPECT_EQ(strip.LastPosition(), (Point{18, 10}));
    release({30, 10});
    EXPECT_EQ(takeLog(), (EventLog{"strip released", "strip click"}));
}

}  // namespace gui
