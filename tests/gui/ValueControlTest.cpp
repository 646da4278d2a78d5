#include "gui/IntValueButton.h"
#include "support/ControlsFixture.h"

#include <cmath>
#include <limits>

namespace gui {

class ValueControlTest : public ControlsFixture {
protected:
    ValueControlTest()
    {
        control->SetBounds(10, 10, 40, 40);
        listenTo(*control, "c");
    }
    void change(int delta) { control->ChangeValue(GesturePhase::Change, delta); }

    std::unique_ptr<ValueControl> control = std::make_unique<ValueControl>(*ui, &root(), &animator);
};

TEST(ModifierActions, EachCombinationOfKeysHasItsOwn)
{
    struct Row {
        int flags, actions;
    };
    for (const Row& row : {Row{0, 0}, Row{4, 1}, Row{1, 2}, Row{2, 4}, Row{3, 6}, Row{6, 5}, Row{5, 0},
                           Row{7, 0}, Row{4 | 128, 0}, Row{4 | 8 | 64 | 256, 1}})
        EXPECT_EQ(ModifierActions::Get(row.flags), row.actions) << row.flags;
    EXPECT_EQ(ModifierActions::KeysOf(ModifierActions::reset), InputFlags::ctrl);
}

TEST_F(ValueControlTest, LimitsPushEachOtherAndTheValue)
{
    control->MaxValue.assign(100);
    control->Value.assign(150);
    EXPECT_EQ(control->Value.value(), 100);
    control->MinValue.assign(200);
    EXPECT_EQ(control->MaxValue.value(), 201);
    EXPECT_EQ(control->Value.value(), 200);
    control->MaxValue.assign(-5);
    EXPECT_EQ(control->MinValue.value(), -6);
    EXPECT_EQ(control->Value.value(), -5);
    EXPECT_TRUE(log.empty());  // no gesture
}

TEST_F(ValueControlTest, NormalizedValuesGoToTheNearestStep)
{
    struct Row {
        float normalized;
        int value;
    };
    control->MinValue.assign(-2);
    control->MaxValue.assign(8);
    for (const Row& row : {Row{0, -2}, Row{0.049f, -2}, Row{0.051f, -1}, Row{0.5f, 3}, Row{1, 8}, Row{7, 8},
                           Row{-7, -2}, Row{std::numeric_limits<float>::quiet_NaN(), -2}}) {
        control->SetNormalizedValue(row.normalized);
        EXPECT_EQ(control->Value.value(), row.value) << row.normalized;
    }
    control->SetWarp([](float x) { return x * x; }, [](float x) { return std::sqrt(x); });
    control->SetNormalizedValue(0.25f);
    EXPECT_EQ(control->Value.value(), 3);
}

TEST_F(ValueControlTest, AGestureGoesPastTheEndAndComesBackTheWholeWay)
{
    control->MaxValue.assign(100);
    control->Value.assign(90);
    control->ChangeValue(GesturePhase::Begin, 0);
    change(1000);
    change(-900);
    EXPECT_EQ(control->Value.value(), 100);
    change(-90);
    EXPECT_EQ(control->Value.value(), 100);
    change(-5);
    EXPECT_EQ(control->Value.value(), 95);
    control->ChangeValue(GesturePhase::End, 0);
    EXPECT_EQ(takeLog(), (EventLog{"c(", "c100", "c95", "c)"}));
}

TEST_F(ValueControlTest, TheHandWinsOverAutomation)
{
    control->Value.assign(10);
    control->ChangeValue(GesturePhase::Begin, 0);
    control->Value.assign(2000);
    EXPECT_EQ(control->Value.value(), 10);
    change(5);
    control->SetNormalizedValue(1.0f);
    EXPECT_EQ(control->Value.value(), 15);
    control->MaxValue.assign(12);  // but not over the limits
    EXPECT_EQ(control->Value.value(), 12);
    control->ChangeValue(GesturePhase::End, 0);
    control->Value.assign(7);
    EXPECT_EQ(control->Value.value(), 7);
    EXPECT_EQ(takeLog(), (EventLog{"c(", "c15", "c)"}));
}

TEST_F(ValueControlTest, AFollowerWithRoomKeepsTheGestureGoing)
{
    control->MaxValue.assign(100);
    control->Value.assign(100);
    listener.allowed = 3;
    control->ChangeValue(GesturePhase::Begin, 0);
    change(10);  // no farther than the follower can go
    listener.allowed = 0;
    change(-7);  // comes back first
    change(-3);
    control->ChangeValue(GesturePhase::End, 0);
    EXPECT_EQ(control->Value.value(), 100);
    EXPECT_EQ(takeLog(), (EventLog{"c(", "c100", "c)"}));
}

TEST_F(ValueControlTest, EachGestureEndsOnEveryPath)
{
    struct Row {
        const char* what;
        std::function<void()> act;
    };
    Control panel(*ui, &root());
    panel.SetBounds(0, 0, 100, 100);
    std::unique_ptr<ValueControl> follower;
    // With Alt the follower's gesture begins and ends along.
    const auto wheel = [this] { root().WindowScroll({20, 20}, InputFlags::alt, {0, 0.1f}, {0, 30}, 1); };
    const Row starts[]{
        {"drag",
         [this] {
             press({20, 20}, InputFlags::alt), move({20, 40}, InputFlags::alt);
         }},
        {"wheel",
         [&] {
             move({20, 20}), wheel();
         }},
        {"wheel before any move", [&] { wheel(); }},
    };
    const Row ends[]{
        {"release",
         [this] {
             release({20, 20});
         }},
        {"release far away",
         [this] {
             release({190, 90});
         }},
        {"cancel and pause", [this] { control->CancelMouse(), wait(); }},
        {"capture taken and pause", [this] { root().SetCapture(nullptr), wait(); }},
        {"deleted", [this] { control.reset(); }},
        {"hidden", [this] { control->Visible.assign(false); }},
        {"disabled", [this] { control->Enabled.assign(false); }},
        {"removed", [this] { control->Parent.assign(nullptr); }},
        {"panel hidden", [&panel] { panel.Visible.assign(false); }},
        {"panel disabled", [&panel] { panel.Enabled.assign(false); }},
        {"panel removed", [&panel] { panel.Parent.assign(nullptr); }},
        {"covered, pause and release",
         [this] {
             Control above(*ui, &root());
             above.SetBounds(0, 0, 200, 100);
             wait(), release({20, 20});
         }},
        {"wheel and release",
         [this] {
             scroll({20, 20}), release({20, 20});
         }},
        {"press and release",
         [this] {
             press({20, 20}), release({20, 20});
         }},
    };
    for (const Row& start : starts)
        for (const Row& end : ends) {
            SCOPED_TRACE(std::string(start.what) + ", " + end.what);
            panel.Parent.assign(&root());
            panel.Visible.assign(true);
            panel.Enabled.assign(true);
            control = std::make_unique<IntValueButton>(*ui, &panel, &animator);
            follower = std::make_unique<ValueControl>(*ui, &panel, &animator);
            control->SetBounds(10, 10, 40, 40);
            control->LinkWith(*follower);
            listenTo(*control, "c");
            listenTo(*follower, "f");
            wait();
            start.act();
            EXPECT_EQ(listener.OpenGestures(), 2);
            end.act();
            EXPECT_EQ(listener.OpenGestures(), 0);
            release({190, 90});
            move({190, 90});
        }
}

TEST_F(ValueControlTest, APressThatIsTakenAwayAtItsStartIsNoGesture)
{
    on(control->OnMouseDown, [this] { control->Enabled.assign(false); });
    press({20, 20});
    release({20, 20});
    EXPECT_EQ(takeLog(), EventLog{});
}

TEST_F(ValueControlTest, TheEndOfTheInterfaceEndsItsGestures)
{
    control->DeleteWithInterface();
    control.release();
    press({20, 20});
    ui.reset();
    EXPECT_EQ(takeLog(), (EventLog{"c(", "c)"}));
}

TEST_F(ValueControlTest, HandlersMayDeleteTheControl)
{
    struct Row {
        const char* what;
        NotifyEvent ValueControl::*event;
    };
    for (const Row& row :
         {Row{"press", &ValueControl::OnMouseDown}, Row{"begin", &ValueControl::OnGestureBegin},
          Row{"change", &ValueControl::OnValueChanged}, Row{"click", &ValueControl::OnClick},
          Row{"end", &ValueControl::OnGestureEnd}}) {
        control = std::make_unique<ValueControl>(*ui, &root(), &animator);
        control->SetBounds(10, 10, 40, 40);
        listenTo(*control, "c");
        on((*control).*row.event, [this] { control.reset(); });
        press({20, 20});
        if (control)
            change(5);
        release({20, 20});
        EXPECT_EQ(control, nullptr) << row.what;
        EXPECT_EQ(listener.OpenGestures(), 0) << row.what;
        wait();
    }
}

}  // namespace gui
