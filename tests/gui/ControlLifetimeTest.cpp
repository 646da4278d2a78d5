#include "gui/Timer.h"
#include "support/GuiFixture.h"

namespace gui {

/// Two controls on the heap, as handlers delete them. The sanitizers judge what is touched afterwards.
class ControlLifetime : public GuiFixture {
protected:
    std::unique_ptr<ProbeControl> panel =
        std::make_unique<ProbeControl>(*ui, &root(), Rect{0, 0, 100, 100}, log, "panel");
    std::unique_ptr<ProbeControl> child =
        std::make_unique<ProbeControl>(*ui, panel.get(), Rect{0, 0, 50, 50}, log, "child");
};

TEST_F(ControlLifetime, HandlersMayDeleteTheirControl)
{
    using Event = NotifyEvent Control::*;
    struct Row {
        const char* what;
        Event event;
        int flags;
    };
    for (const Row& row : {Row{"press", &Control::OnMouseDown, 0}, Row{"release", &Control::OnMouseUp, 0},
                           Row{"click", &Control::OnClick, 0}, Row{"enter", &Control::OnMouseEnter, 0},
                           Row{"move", &Control::OnMouseMove, 0},
                           Row{"double", &Control::OnDoubleClick, InputFlags::doubleClick}}) {
        for (const bool wholePanel : {false, true}) {
            panel = std::make_unique<ProbeControl>(*ui, &root(), Rect{0, 0, 100, 100}, log, "panel");
            child = std::make_unique<ProbeControl>(*ui, panel.get(), Rect{0, 0, 50, 50}, log, "child");
            child->WaitsForDoubleClick.assign(true);
            int fired = 0;
            on(((*child).*row.event), [&] {
                ++fired;
                child.reset();
                if (wholePanel)
                    panel.reset();
            });
            click({5, 5}, row.flags);
            EXPECT_EQ(fired, 1) << row.what;
            EXPECT_FALSE(child) << row.what;
            EXPECT_EQ(root().CapturedControl(), nullptr) << row.what;
            ui->AdvanceTime(400);
        }
    }
}

TEST_F(ControlLifetime, HandlersMayDestroyTheWholeInterface)
{
    for (const bool byClick : {true, false}) {
        log.clear();
        if (!ui)
            ui = std::make_unique<OffscreenInterface>(std::make_unique<PlainPlatform>(), Point{200, 100});
        panel = std::make_unique<ProbeControl>(*ui, &root(), Rect{0, 0, 100, 100}, log);
        child.reset();
        const auto end = [&] {
            panel.reset();
            ui.reset();
        };
        RootControl& entered = root();
        const auto liveness = entered.Liveness();
        if (byClick) {
            on(panel->OnClick, end);
            const RootControl::Entry entry(entered);
            entered.WindowMouseDown(0, {5, 5}, 0);
            entered.WindowMouseUp(0, {5, 5}, 0);
            EXPECT_FALSE(entry.IsRootAlive());
        } else {
            on(ui->OnTick, end);
            ui->AdvanceTime(20);
        }
        EXPECT_FALSE(liveness->alive);
        EXPECT_FALSE(ui);
    }
}

TEST_F(ControlLifetime, ADyingControlIsForgotten)
{
    child->WaitsForDoubleClick.assign(true);
    child->takesWheel = true;
    click({5, 5});  // a single click is pending
    scroll({5, 5});
    EXPECT_EQ(root().CapturedControl(), child.get());
    int captureChanges = 0;
    on(root().OnCaptureChanged, [&] { ++captureChanges; });
    child.reset();
    EXPECT_EQ(root().CapturedControl(), nullptr);
    EXPECT_EQ(captureChanges, 1);
    EXPECT_TRUE(panel->IsInnermostHovered());
    EXPECT_EQ(panel->FocusedChild(), nullptr);
    takeLog();
    ui->AdvanceTime(1000);
    EXPECT_EQ(takeLog(), EventLog{});
}

TEST_F(ControlLifetime, AParentLeavesItsChildrenWithoutOne)
{
    press({5, 5});
    panel.reset();
    EXPECT_EQ(child->Parent.value(), nullptr);
    EXPECT_EQ(child->GetRoot(), nullptr);
    EXPECT_EQ(child->GetCaptureMode(), Control::CaptureMode::None);
    EXPECT_FALSE(child->IsHovered());
    EXPECT_TRUE(root().Children().empty());
}

TEST_F(ControlLifetime, AControlThatChangesItsParentInADragKeepsTheMouse)
{
    on(child->OnMouseDown, [&] { child->Parent.assign(&root()); });
    press({5, 5});
    EXPECT_EQ(root().CapturedControl(), child.get());
    EXPECT_EQ(root().Children(), (std::vector<Control*>{panel.get(), child.get()}));
    move({7, 7});
    EXPECT_TRUE(child->IsInnermostHovered());
    EXPECT_FALSE(panel->IsHovered());
    // Out of the tree there is no mouse.
    child->Parent.assign(nullptr);
    EXPECT_EQ(root().CapturedControl(), nullptr);
}

TEST_F(ControlLifetime, ChildrenGoWhereTheInsertIndexSays)
{
    panel->SetInsertIndex(0);
    ProbeControl first(*ui, panel.get(), {0, 0, 1, 1}, log);
    EXPECT_EQ(panel->Children(), (std::vector<Control*>{&first, child.get()}));
    first.Parent.assign(nullptr);
    auto* owned = child.release();
    owned->LinkTo(first);
    panel->DeleteChildren();
    EXPECT_TRUE(panel->Children().empty());
    EXPECT_FALSE(first.IsLinkedTo(*owned));
}

TEST_F(ControlLifetime, ListenersHearOfChangesUntilEitherDies)
{
    class Listener : public Control {
    public:
        using Control::Control;
        void ChildChanged(Control&, Change change) override { heard.push_back(change); }
        std::vector<Change> heard;
    };
    Listener listener(*ui);
    child->AddChangeListener(listener);
    {
        Listener shortLived(*ui);
        child->AddChangeListener(shortLived);
    }
    child->Bounds.assign({0, 0, 10, 10});
    child->Visible.assign(false);
    child->Visible.assign(true);
    child->Opacity.assign(0);
    child->Opacity.assign(255);
    child->Opaque.assign(true);
    child->Parent.assign(nullptr);
    using enum Control::Change;
    EXPECT_EQ(listener.heard,
              (std::vector{Bounds, Visibility, Visibility, Opacity, Opacity, OpaqueRect, Reparented}));
    child.reset();
    EXPECT_EQ(listener.heard.size(), 7u);
}

TEST_F(ControlLifetime, TheInterfaceDeletesWhatNobodyOwns)
{
    struct Orphan : Component {
        Orphan(UserInterface& ui, int& deathCount) : Component(ui), deaths(deathCount)
        {
            DeleteWithInterface();
        }
        ~Orphan() override { ++deaths; }
        int& deaths;
    };
    int deaths = 0;
    delete new Orphan(*ui, deaths);
    new Orphan(*ui, deaths);
    new Orphan(*ui, deaths);
    child.reset();
    panel.reset();
    ui.reset();
    EXPECT_EQ(deaths, 3);
}

}  // namespace gui
