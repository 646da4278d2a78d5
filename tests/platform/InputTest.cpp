#include "EditorFixture.h"
#include "gui/InputFlags.h"
#include "platform/SmoothScroll.h"
#include "platform/WheelMotion.h"

#include <xkbcommon/xkbcommon.h>

namespace {

using InputTest = EditorFixture;
using namespace gui;

TEST_F(InputTest, PressesArriveInUnitsWithTheirFlags)
{
    struct Row {
        int display, button, flag;
    };
    Open(2.0f);
    for (const Row& row : {Row{1, MouseButton::left, InputFlags::leftButton},
                           Row{3, MouseButton::right, InputFlags::rightButton},
                           Row{2, MouseButton::middle, InputFlags::middleButton}}) {
        control->events.clear();
        host->Key(XKB_KEY_Shift_L, true);
        host->Click(120, 80, row.display);
        host->Key(XKB_KEY_Shift_L, false);
        ASSERT_TRUE(Until([&] { return control->Has("up"); }));
        const auto* down = control->Find("down");
        ASSERT_TRUE(down);
        EXPECT_EQ(down->number, row.button);
        EXPECT_EQ(down->point, (Point{10.0f, 15.0f}));
        EXPECT_EQ(down->flags, row.flag | InputFlags::shift);
        EXPECT_EQ(control->Find("up")->flags, InputFlags::shift);
    }
}

TEST_F(InputTest, OnlyTheSecondOfQuickPressesInPlaceIsDouble)
{
    Open();
    for (int i = 0; i < 3; ++i)
        host->Click(150, 100);
    ASSERT_TRUE(Until([&] { return control->Count("up") == 3; }));
    EXPECT_EQ(control->Count("down"), 2);
    EXPECT_EQ(control->Count("double"), 1);
    control->events.clear();
    host->Click(180, 100);
    host->Click(190, 100);  // ten pixels on
    ASSERT_TRUE(Until([&] { return control->Count("up") == 2; }));
    EXPECT_EQ(control->Count("double"), 0);
}

TEST_F(InputTest, ADragGoesOnOutsideAndTheMouseThenLeaves)
{
    Open();
    host->Move(150, 100);
    host->Button(1, true);
    host->Move(600, 500);
    ASSERT_TRUE(Until([&] { return control->Has("down"); }));
    EXPECT_FALSE(control->Has("up"));
    host->Button(1, false);
    ASSERT_TRUE(Until([&] { return control->Has("up"); }));
    EXPECT_EQ(control->Find("up")->point, (Point{500.0f, 450.0f}));
    EXPECT_TRUE(Until([&] { return !control->IsHovered(); }));
}

TEST_F(InputTest, WheelButtonsScroll)
{
    struct Row {
        int button;
        const char* axis;
        float delta;
    };
    Open();
    host->Move(150, 100);
    // 3 lines x 10 up and down, 25 sideways.
    for (const Row& row : {Row{4, "wheel", 30.0f}, Row{5, "wheel", -30.0f}, Row{6, "sideways", -25.0f},
                           Row{7, "sideways", 25.0f}}) {
        control->events.clear();
        host->Button(row.button, true);
        host->Button(row.button, false);
        ASSERT_TRUE(Until([&] { return control->Has(row.axis); })) << row.button;
        EXPECT_FLOAT_EQ(control->Find(row.axis)->point.x, row.delta);
    }
}

TEST(WheelMotion, PausesAreLimitedAndBothModifiersTurnIt)
{
    constexpr int both = InputFlags::ctrl | InputFlags::shift;
    WheelMotion wheel;
    EXPECT_FLOAT_EQ(wheel.Step(Orientation::Vertical, 1.0f, 0, 1000).velocity.y, 1.0f / 500.0f);
    EXPECT_FLOAT_EQ(wheel.Step(Orientation::Vertical, 1.0f, 0, 1003).velocity.y, 1.0f / 10.0f);
    EXPECT_FLOAT_EQ(wheel.Step(Orientation::Vertical, -2.0f, 0, 1053).velocity.y, -2.0f / 50.0f);
    EXPECT_FLOAT_EQ(wheel.Step(Orientation::Vertical, 1.0f, 0, 9000).velocity.y, 1.0f / 500.0f);
    const auto turned = wheel.Step(Orientation::Vertical, 0.5f, both | InputFlags::alt, 9100);
    EXPECT_EQ(turned.delta, (Point{12.5f, 0.0f}));
    EXPECT_FLOAT_EQ(turned.velocity.x, 0.5f / 100.0f);
    EXPECT_EQ(turned.flags, InputFlags::alt);
    EXPECT_FLOAT_EQ(turned.magnitude, 0.5f);
    EXPECT_EQ(wheel.Step(Orientation::Vertical, 1.0f, InputFlags::ctrl, 9200).delta, (Point{0.0f, 30.0f}));
}

TEST(SmoothScroll, TellsDifferencesInNotches)
{
    SmoothScroll scroll;
    scroll.SetAxis(9, 3, {Orientation::Vertical, 15.0, std::nullopt});
    scroll.SetAxis(9, 2, {Orientation::Horizontal, -120.0, 60.0});
    EXPECT_TRUE(scroll.HasAxes(9));
    EXPECT_FALSE(scroll.HasAxes(8));
    EXPECT_FALSE(scroll.Move(9, 1, 7.0));
    EXPECT_FALSE(scroll.Move(9, 3, 100.0)) << "where it stands isn't a motion";
    EXPECT_FLOAT_EQ(scroll.Move(9, 3, 107.5)->notches, -0.5f) << "downwards";
    EXPECT_FLOAT_EQ(scroll.Move(9, 2, 0.0)->notches, 0.5f);
    scroll.ForgetValues();
    EXPECT_FALSE(scroll.Move(9, 3, 500.0));
}

TEST(SmoothScroll, ATouchpadsPartsOfNotchesMakeScrolls)
{
    struct Row {
        int axis;
        double value;
        std::uint32_t ms;
        float velocity, delta;
    };
    SmoothScroll axes;
    WheelMotion wheel;
    axes.SetAxis(9, 2, {Orientation::Horizontal, 15.0, 0.0});
    axes.SetAxis(9, 3, {Orientation::Vertical, 15.0, 100.0});
    for (const Row& row :
         {Row{3, 101.5, 1000, -0.1f / 500.0f, -3.0f},  // after a long pause
          Row{3, 104.5, 1008, -0.2f / 10.0f, -6.0f},   // 8 ms count as 10
          Row{2, 3.0, 1010, 0.2f / 500.0f, 5.0f},      // the other axis has its own clock
          Row{3, 98.5, 1038, 0.4f / 30.0f, 12.0f}, Row{2, 0.0, 1030, -0.2f / 20.0f, -5.0f}}) {
        const auto step = axes.Move(9, row.axis, row.value);
        ASSERT_TRUE(step);
        const auto scroll = wheel.Step(step->orientation, step->notches, 0, row.ms);
        const bool sideways = row.axis == 2;
        EXPECT_NEAR(sideways ? scroll.velocity.x : scroll.velocity.y, row.velocity, 1e-6f);
        EXPECT_NEAR(sideways ? scroll.delta.x : scroll.delta.y, row.delta, 1e-5f);
        EXPECT_EQ(sideways ? scroll.delta.y : scroll.delta.x, 0.0f);
    }
}

TEST_F(InputTest, AClickTakesTheKeyboardAndWantedKeysStay)
{
    Open();
    host->TakeFocus();
    host->Move(150, 100);
    host->Type(XKB_KEY_a);
    loop->RunFor(30);
    EXPECT_FALSE(control->Has("key")) << "the mouse alone takes no keys";
    host->Click(150, 100);
    ASSERT_TRUE(Until([&] { return host->FocusOwner() == ui->Window().Window(); }));
    ui->GetRootControl().SetFocusedChild(control.get());
    struct Row {
        std::uint32_t symbol;
        int number;
    };
    for (const Row& row : {Row{XKB_KEY_a, 'a'}, Row{XKB_KEY_Return, '\r'}, Row{XKB_KEY_Up, -KeyCode::up},
                           Row{XKB_KEY_Delete, -KeyCode::deleteKey}, Row{XKB_KEY_End, -KeyCode::end}}) {
        control->events.clear();
        host->Type(row.symbol);
        ASSERT_TRUE(Until([&] { return control->Has("key"); })) << row.symbol;
        EXPECT_EQ(control->Count("key"), 1) << row.symbol;
        EXPECT_EQ(control->Find("key")->number, row.number);
    }
    EXPECT_EQ(host->FocusOwner(), ui->Window().Window());
}

TEST_F(InputTest, KeysNobodyTakesReachTheHostAndTheFocusFollows)
{
    Open();
    host->TakeFocus();
    control->takesKeys = false;
    host->Click(150, 100);
    ASSERT_TRUE(Until([&] { return host->FocusOwner() == ui->Window().Window(); }));
    while (xcb_generic_event_t* event = host->Poll())
        std::free(event);
    host->Type(XKB_KEY_space);
    ASSERT_TRUE(Until([&] { return host->FocusOwner() == host->Window(); }));
    auto* key = reinterpret_cast<xcb_key_press_event_t*>(host->WaitFor(XCB_KEY_PRESS));
    ASSERT_TRUE(key);
    EXPECT_EQ(key->event, host->Window());
    std::free(key);
    host->Type(XKB_KEY_space);
    auto* next = host->WaitFor(XCB_KEY_PRESS);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->response_type & 0x80, 0) << "the next comes from the display itself";
    std::free(next);

    // A key that is ours again is ours to its end.
    control->takesKeys = true;
    host->Click(150, 100);
    ASSERT_TRUE(Until([&] { return host->FocusOwner() == ui->Window().Window(); }));
    while (xcb_generic_event_t* event = host->Poll())
        std::free(event);
    host->Type(XKB_KEY_space);
    loop->RunFor(30);
    while (xcb_generic_event_t* event = host->Poll()) {
        EXPECT_NE(event->response_type & 0x7F, XCB_KEY_RELEASE);
        std::free(event);
    }
}

TEST_F(InputTest, AModifierAloneIsSeenUnderTheMouse)
{
    host->Key(XKB_KEY_Shift_L, true);
    Open();
    host->Move(150, 100);
    ASSERT_TRUE(Until([&] { return control->IsHovered(); }));
    loop->RunFor(50);
    EXPECT_EQ(ui->GetRootControl().LastFlags(), InputFlags::shift) << "held since before";
    host->Key(XKB_KEY_Shift_L, false);
    EXPECT_TRUE(Until([&] { return ui->GetRootControl().LastFlags() == 0; }));
    int flags = -1;
    control->OnMouseMove.setHandler(
        NotifyEvent::handler([&](void*) { flags = ui->GetRootControl().LastFlags(); }));
    host->Key(XKB_KEY_Control_L, true);
    EXPECT_TRUE(Until([&] { return flags == InputFlags::ctrl; }));
    host->Key(XKB_KEY_Control_L, false);
    EXPECT_TRUE(Until([&] { return flags == 0; }));
}

}  // namespace
