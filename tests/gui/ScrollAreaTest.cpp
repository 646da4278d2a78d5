#include "gui/BarAnimation.h"
#include "gui/ControlBar.h"
#include "gui/Cubic.h"
#include "gui/FadeOverlay.h"
#include "gui/ScrollStrip.h"
#include "support/ControlsFixture.h"

namespace gui {

class ScrollAreaTest : public ControlsFixture {
protected:
    ScrollAreaTest()
    {
        area.Bounds.assign({0, 0, 100, 50});
        area.ContentWidth.assign(400);
        area.ContentHeight.assign(150);
    }
    ScrollArea area{*ui, &root(), &animator};
};

TEST_F(ScrollAreaTest, TheHandMovesTheContentAgainstTheScroll)
{
    press({80, 40});
    move({60, 45});
    EXPECT_EQ(area.ScrollX.value(), 20);
    EXPECT_EQ(area.ScrollY.value(), 0);  // no further up
    EXPECT_EQ(area.Content().GetPosition(), (Point{-20, 0}));
    ui->AdvanceTime(200);  // stands still
    release({60, 45});
    EXPECT_EQ(animator.RunningCount(), 0);
    area.HandDrag.assign(false);
    wait();
    press({80, 40});
    move({60, 40});
    release({60, 40});
    EXPECT_EQ(area.ScrollX.value(), 20);
}

TEST_F(ScrollAreaTest, AThrownContentCoastsButNotPastItsEnds)
{
    struct Row {
        const char* what;
        float moved;  // within 100 ms
        float start, end;
    };
    for (const Row& row : {Row{"49 a second", 4.9f, 0, 4.9f}, Row{"50 a second", 5.0f, 0, 5 + 12.5f},
                           Row{"to the end", 60, 200, 300}, Row{"back to the start", -40, 60, 0}}) {
        area.ScrollX.assign(row.start);
        press({50, 20});
        ui->AdvanceTime(100);
        move({50 - row.moved, 20});
        release({50 - row.moved, 20});
        const float released = area.ScrollX.value();
        EXPECT_FLOAT_EQ(released, row.start + row.moved) << row.what;
        const bool coasts = row.end != released;
        ui->AdvanceTime(900);
        EXPECT_EQ(area.ScrollX.value() != row.end, coasts) << row.what;
        ui->AdvanceTime(200);
        EXPECT_FLOAT_EQ(area.ScrollX.value(), row.end) << row.what;
        EXPECT_EQ(animator.RunningCount(), 0) << row.what;
    }
    press({50, 20});
    ui->AdvanceTime(100);
    move({30, 20});
    release({30, 20});
    ui->AdvanceTime(50);
    press({50, 20});  // catches it
    EXPECT_EQ(animator.RunningCount(), 0);
    release({50, 20});
}

TEST_F(ScrollAreaTest, AWheelThatCanGoNoFurtherIsTheParents)
{
    area.ScrollStepY.assign(40);
    EXPECT_FALSE(scroll({50, 20}, {0, 0.01f}, {0, 30}));
    EXPECT_TRUE(scroll({50, 20}, {0, -0.01f}, {0, -30}));
    EXPECT_EQ(area.ScrollY.value(), 40);
    ui->AdvanceTime(600);
    EXPECT_TRUE(scroll({50, 20}, {0.01f, 0}, {25, 0}));
    EXPECT_EQ(area.ScrollX.value(), 32);
    area.ContentWidth.assign(110);
    EXPECT_EQ(area.ScrollX.value(), 10);  // stays in range
}

TEST_F(ScrollAreaTest, ABarStandsForTheView)
{
    area.HorizontalBar.assign(true);
    area.AutoHide.assign(true);
    EXPECT_EQ(area.ViewRect(), (Rect{0, 0, 100, 38}));
    press({12, 44});  // in the bar, 25 of 100 long
    move({49.5f, 44});
    EXPECT_FLOAT_EQ(area.ScrollX.value(), 150);  // half of the way
    release({49.5f, 44});
    click({98, 44});  // beside it: by a view
    EXPECT_FLOAT_EQ(area.ScrollX.value(), 250);
    area.ContentWidth.assign(90);
    EXPECT_EQ(area.ViewRect(), (Rect{0, 0, 100, 50}));
}

TEST_F(ScrollAreaTest, AStripsButtonsScrollWhileTheyAreHeld)
{
    area.Visible.assign(false);
    ScrollStrip strip(*ui, &root(), &animator, nullptr, nullptr);
    strip.LeftButton().SetSize({20, 40});
    strip.RightButton().SetSize({20, 40});
    strip.Bounds.assign({0, 0, 100, 40});
    strip.Area().ContentWidth.assign(200);
    EXPECT_FALSE(strip.LeftButton().Visible.value());
    EXPECT_EQ(root().HitChild({95, 20}), &strip);
    EXPECT_EQ(strip.HitChild({95, 20}), &strip.RightButton());
    EXPECT_NE(strip.HitChild({85, 20}), &strip.RightButton());  // its inner half
    press({95, 20});
    EXPECT_EQ(strip.Area().ScrollX.value(), 32);
    ui->AdvanceTime(320);
    EXPECT_EQ(strip.Area().ScrollX.value(), 64);
    EXPECT_TRUE(strip.LeftButton().Visible.value());
    ui->AdvanceTime(2000);
    EXPECT_EQ(strip.Area().ScrollX.value(), 100);
    EXPECT_FALSE(strip.RightButton().Visible.value());
    release({95, 20});
    EXPECT_TRUE(scroll({50, 20}, {0, 0.01f}, {0, 30}));  // a wheel has one axis
    EXPECT_EQ(strip.Area().ScrollX.value(), 68);
    ui->AdvanceTime(600);
    EXPECT_TRUE(scroll({95, 20}, {0, 0.01f}, {0, 30}));  // over a button
    EXPECT_EQ(strip.Area().ScrollX.value(), 36);
    EXPECT_TRUE(scroll({95, 20}, {0, 0.01f}, {0, 60}));
    EXPECT_FALSE(scroll({95, 20}, {0, 0.01f}, {0, 30}));  // at the end it is the parent's
}

TEST_F(ScrollAreaTest, ABarLaysItsControlsOutAsTheyCloseAndOpen)
{
    ControlBar bar(*ui, &root(), &animator);
    Control first(*ui), second(*ui), third(*ui);
    for (Control* control : {&first, &third}) {
        control->SetSize({40, 20});
        bar.Insert(-1, *control);
    }
    second.SetSize({20, 20});
    bar.Insert(1, second);
    EXPECT_EQ(bar.GetWidth(), 100);
    EXPECT_EQ(third.GetLeft(), 60);
    bar.SetInsertIndex(0);
    auto made = std::make_unique<Control>(*ui, &bar);
    made->SetSize({10, 20});
    EXPECT_EQ(bar.Items(), (std::vector<Control*>{made.get(), &first, &second, &third}));
    EXPECT_EQ(third.GetLeft(), 70);
    made.reset();
    bar.SetInsertIndex(-1);
    bar.Collapse(second);  // not animated
    EXPECT_EQ(third.GetLeft(), 40);
    bar.Expand(second, 30);
    EXPECT_EQ(bar.GetWidth(), 110);

    bar.Animated.assign(true);
    bar.BarAnimationFlags.assign(3);
    ui->AdvanceTime(10);
    bar.Collapse(first);
    ui->AdvanceTime(50);  // a quarter: half faded, as long as before
    EXPECT_NEAR(first.Opacity.value(), 128, 26);
    EXPECT_NEAR(first.GetWidth(), 40, 0.01f);
    ui->AdvanceTime(100);  // three quarters: 0.7^4 of the length, as a share of 1 - 0.4^4
    EXPECT_EQ(first.Opacity.value(), 0);
    EXPECT_NEAR(first.GetWidth(), 40 * 0.220f, 3);
    EXPECT_FLOAT_EQ(second.GetLeft(), first.GetWidth());
    ui->AdvanceTime(100);
    EXPECT_NEAR(first.GetWidth(), 0, 1e-3f);
    EXPECT_NEAR(bar.GetWidth(), 70, 1e-3f);
    bar.Expand(first, 50);
    ui->AdvanceTime(300);
    EXPECT_FLOAT_EQ(first.GetWidth(), 50);
    EXPECT_EQ(first.Opacity.value(), 255);
    EXPECT_FLOAT_EQ(third.GetLeft(), 80);
}

TEST_F(ScrollAreaTest, AControlThatDiesWhileItClosesLeavesItsBar)
{
    ControlBar bar(*ui, &root(), &animator);
    auto first = std::make_unique<Control>(*ui);
    Control second(*ui);
    first->SetSize({40, 20});
    second.SetSize({40, 20});
    bar.Insert(-1, *first);
    bar.Insert(-1, second);
    bar.Animated.assign(true);
    bar.Collapse(*first);
    ui->AdvanceTime(50);
    first.reset();
    EXPECT_EQ(animator.RunningCount(), 0);
    EXPECT_EQ(second.GetLeft(), 0);
    EXPECT_NEAR(bar.GetWidth(), 40, 1e-3f);
}

TEST(Cubic, GoesThroughItsEndsWithItsSlopes)
{
    struct Row {
        double x0, y0, m0, x1, y1, m1;
    };
    for (const Row& row : {Row{0, 0, 0, 1, 1, 0}, Row{-3, 5, 2, 4, -1, -0.5}, Row{10, 1, -1, 12, 8, 3}}) {
        Cubic cubic;
        CubicSegment segment;
        cubic.SetHermite(row.x0, row.y0, row.m0, row.x1, row.y1, row.m1);
        segment.SetHermite(row.x0, row.y0, row.m0, row.x1, row.y1, row.m1);
        const auto at = [&](double x) { return static_cast<double>(cubic.ValueAt(static_cast<float>(x))); };
        EXPECT_NEAR(at(row.x0), row.y0, 1e-5);
        EXPECT_NEAR(at(row.x1), row.y1, 1e-5);
        const double h = 1.0 / 64;
        EXPECT_NEAR((at(row.x0 + h) - at(row.x0 - h)) / (2 * h), -row.m0, 5e-3);
        EXPECT_NEAR((at(row.x1 + h) - at(row.x1 - h)) / (2 * h), -row.m1, 5e-3);
        EXPECT_EQ(segment.ValueAt(static_cast<float>(row.x0 - 1)), static_cast<float>(row.y0));
        EXPECT_EQ(segment.ValueAt(static_cast<float>(row.x1 + 1)), static_cast<float>(row.y1));
        const auto middle = static_cast<float>((row.x0 + row.x1) / 2);
        EXPECT_EQ(segment.ValueAt(middle), cubic.ValueAt(middle));
    }
}

TEST_F(ScrollAreaTest, FadesStandAtTheShownEdgesAndGiveWayToTheMouse)
{
    area.Visible.assign(false);
    FadeOverlay fades(*ui, &root(), nullptr);
    fades.Bounds.assign({0, 0, 100, 50});
    fades.SetShown(FadeOverlay::Edge::Right, true);
    ui->Paint();
    const auto shade = [&](float x) { return static_cast<int>(ui->Picture().GetPixel({x, 25}).r); };
    EXPECT_LT(shade(99), 0x18);
    EXPECT_GT(shade(85), 0xA8);
    EXPECT_EQ(shade(50), 0xC0);
    EXPECT_EQ(root().HitChild({95, 25}), &fades);
    EXPECT_EQ(root().HitChild({5, 25}), nullptr);
    move({95, 25});
    EXPECT_EQ(root().DirtyRect(), fades.EdgeRect(FadeOverlay::Edge::Right));
    ui->Paint();
    EXPECT_GT(shade(99), 0x60);
}

}  // namespace gui
