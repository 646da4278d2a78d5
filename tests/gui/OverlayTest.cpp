#include "gui/Canvas.h"
#include "gui/DragStage.h"
#include "support/GuiFixture.h"
#include "support/RecordingCanvas.h"

namespace gui {

class OverlayTest : public GuiFixture {
protected:
    struct Ghost : Overlay::VirtualGhostControl {
        explicit Ghost(const gui::Rect& ghostRect) : rect(ghostRect) {}
        gui::Rect Rect() const override { return rect; }
        bool Enabled() const override { return enabled; }
        void Paint(Canvas& canvas) override { canvas.FillRect({0, 0, 5, 5}, Color::White()); }
        gui::Rect rect;
        bool enabled = true;
    };

    std::vector<RecordingCanvas::Fill> paint()
    {
        ui->Paint();
        overlay->Invalidate();
        RecordingCanvas target;
        Canvas canvas(target);
        root().PaintDirty(canvas);
        return target.fills;
    }

    Animator animator{*ui};
    Overlay* overlay = new Overlay(*ui, &animator);
    ProbeControl panel{*ui, &root(), {0, 0, 100, 100}, log, "panel"};
    ProbeControl knob{*ui, &panel, {20, 20, 60, 60}, log, "knob"};
};

TEST_F(OverlayTest, DimsAllButTheCutOuts)
{
    overlay->AddCutOut(knob, Overlay::CutOutMode::Lifted);
    overlay->AddGhost(std::make_unique<Ghost>(Rect{150, 50, 155, 55}));
    overlay->Show(root());
    const auto fills = paint();
    float dimmedArea = 0;
    for (const auto& fill : fills) {
        if (fill.color != Color::Black().WithAlpha(0x80))
            continue;
        dimmedArea += fill.rect.Area();
        EXPECT_TRUE(fill.rect.Intersected({20, 20, 60, 60}).IsEmpty());
    }
    EXPECT_EQ(dimmedArea, 200 * 100 - 40 * 40);
    EXPECT_EQ(fills.back(), (RecordingCanvas::Fill{{150, 50, 155, 55}, Color::White()}));
    ui->Paint();
    knob.SetLeft(30);
    EXPECT_EQ(root().DirtyRect(), (Rect{0, 0, 200, 100}));
}

TEST_F(OverlayTest, FindsTheItemOnTop)
{
    ProbeControl inner(*ui, &panel, {30, 30, 50, 50}, log), never(*ui, &panel, {60, 60, 70, 70}, log);
    auto shaped = std::make_unique<ProbeControl>(*ui, &panel, Rect{80, 80, 120, 90}, log);
    overlay->AddCutOut(knob, Overlay::CutOutMode::Lifted);
    overlay->AddCutOut(inner, Overlay::CutOutMode::Lifted);
    auto ghost = std::make_unique<Ghost>(Rect{45, 45, 65, 65});
    Ghost& ghostItem = *ghost;
    overlay->AddGhost(std::move(ghost));
    overlay->AddCutOut(never, Overlay::CutOutMode::NeverHit);
    overlay->AddCutOut(*shaped, Overlay::CutOutMode::Shaped);
    overlay->Show(root());
    EXPECT_EQ(overlay->HitItem({25, 25}), 0);
    EXPECT_EQ(overlay->HitItem({35, 35}), 1);
    EXPECT_EQ(overlay->HitItem({47, 47}), 4);  // the ghost, after four cut-outs
    EXPECT_EQ(overlay->HitItem({67, 67}), -1);
    EXPECT_EQ(overlay->HitItem({85, 85}), 3);
    EXPECT_EQ(overlay->HitItem({110, 85}), -1);  // cut away by the panel
    ghostItem.enabled = false;
    shaped->alpha = 100;
    inner.Visible.assign(false);
    EXPECT_EQ(overlay->HitItem({47, 47}), 0);
    EXPECT_EQ(overlay->HitItem({85, 85}), -1);
    shaped.reset();
    EXPECT_EQ(overlay->CutOut(3), nullptr);
    EXPECT_EQ(overlay->ItemCount(), 5);
    // The knob's mark goes below the middle: 40 + (40 + 20) / 4 - 1.
    EXPECT_EQ(overlay->ItemCenter(0), (Point{40, 54}));
    EXPECT_EQ(overlay->ItemCenter(1), (Point{40, 40}));
}

TEST_F(OverlayTest, TakesThePressesAndFadesAway)
{
    animator.Enabled.assign(true);
    overlay->AddCutOut(knob, Overlay::CutOutMode::Lifted);
    overlay->Show(root());
    EXPECT_EQ(root().Children().back(), overlay);
    press({40, 40});
    EXPECT_EQ(root().CapturedControl(), overlay);
    release({40, 40});
    EXPECT_EQ(takeLog(), EventLog{});
    bool closed = false;
    on(overlay->OnClosed, [&] { closed = true; });
    overlay->Close();
    ui->AdvanceTime(150);
    EXPECT_FALSE(closed);
    EXPECT_LT(overlay->Opacity.value(), 255);
    click({40, 40});  // already passes
    EXPECT_EQ(takeLog().back(), "knob click");
    ui->AdvanceTime(300);
    EXPECT_TRUE(closed);
    EXPECT_EQ(root().Children(), std::vector<Control*>{&panel});
}

TEST_F(OverlayTest, WithoutAnAnimatorItIsGoneAtOnce)
{
    auto* plain = new Overlay(*ui, nullptr);
    plain->Show(root());
    plain->Close();
    EXPECT_FALSE(plain->Visible.value());
    ui->AdvanceTime(10);
    EXPECT_EQ(root().Children(), std::vector<Control*>{&panel});
    overlay->Show(root());  // and the interface deletes what is still open
}

class DragStageTest : public GuiFixture {
protected:
    class Target : public ProbeControl {
    public:
        using ProbeControl::ProbeControl;
        void OtherClicked(int notice) override { notices.push_back(notice); }
        std::vector<int> notices;
    };
    class Stage : public DragStage {
    public:
        Stage(DragStageTest& dragTest) : DragStage(*dragTest.ui, nullptr), test(dragTest) {}
        void BuildContent() override
        {
            AddCutOut(test.a, CutOutMode::Lifted);
            AddCutOut(test.b, CutOutMode::Lifted);
        }
        void Drop() override
        {
            test.droppedOn.push_back(HoverIndex());
            DragStage::Drop();
        }
        DragStageTest& test;
    };

    Stage& startDrag()
    {
        press({5, 5});
        auto* stage = new Stage(*this);
        stage->StartDrag(*source, std::make_unique<DragObject>());
        return *stage;
    }
    std::vector<int> take(Target& target) { return std::exchange(target.notices, {}); }

    std::unique_ptr<ProbeControl> source =
        std::make_unique<ProbeControl>(*ui, &root(), Rect{0, 0, 10, 10}, log, "source");
    Target a{*ui, &root(), {20, 0, 40, 20}, log}, b{*ui, &root(), {40, 0, 60, 20}, log};
    std::vector<int> droppedOn;
};

TEST_F(DragStageTest, TellsWhatItPassesAndDrops)
{
    const Stage& stage = startDrag();
    EXPECT_EQ(root().CapturedControl(), &stage);
    EXPECT_EQ(takeLog(), (EventLog{"source enter", "source released", "source leave"}));
    move({25, 5});
    ui->AdvanceTime(399);
    EXPECT_EQ(take(a), std::vector<int>{1});
    ui->AdvanceTime(1);
    EXPECT_EQ(take(a), std::vector<int>{2});
    ui->AdvanceTime(1000);
    move({45, 5});
    EXPECT_EQ(take(a), std::vector<int>{0});
    EXPECT_EQ(take(b), std::vector<int>{1});
    release({45, 5});
    EXPECT_EQ(take(b), std::vector<int>{0});
    EXPECT_EQ(droppedOn, std::vector<int>{1});
    ui->AdvanceTime(10);
    EXPECT_EQ(root().Children().size(), 3u);
    EXPECT_EQ(takeLog(), EventLog{});  // no click of the source
}

TEST_F(DragStageTest, EndsWithItsSourceOrItsCapture)
{
    for (const bool bySource : {false, true}) {
        startDrag();
        move({25, 5});
        take(a);
        if (bySource)
            source.reset();
        else
            root().CapturedControl()->CancelMouse();
        EXPECT_EQ(take(a), std::vector<int>{0});
        EXPECT_EQ(root().CapturedControl(), nullptr);
        ui->AdvanceTime(10);
        release({25, 5});
        EXPECT_TRUE(droppedOn.empty());
    }
    EXPECT_EQ(root().Children(), (std::vector<Control*>{&a, &b}));
}

}  // namespace gui
