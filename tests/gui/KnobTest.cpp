#include "gui/BitmapMixing.h"
#include "gui/KnobStyle.h"
#include "gui/Switch.h"
#include "gui/SwitchStyle.h"
#include "support/ControlsFixture.h"

#include <cmath>
#include <numbers>

namespace gui {

/// A picture filled with one colour.
std::unique_ptr<Bitmap> filled(UserInterface& ui, float width, float height, Color color)
{
    auto bitmap = std::make_unique<Bitmap>(ui.Backing());
    bitmap->SetSize(width, height);
    bitmap->FillRect({0, 0, width, height}, color);
    return bitmap;
}

class KnobTest : public ControlsFixture {
protected:
    KnobTest()
    {
        style.backNormal = back.get();
        style.overlayNormal = pointer.get();
        ringStyle.overlayNormal = pointer.get();
        ringStyle.OuterRadius.assign(20);
        ringStyle.InnerRadius.assign(10);
        ringStyle.HandleTolerance.assign(10);
        pointer->FillRect({18, 2, 22, 10}, Color::White());
    }
    std::unique_ptr<Knob> makeKnob(const Knob::Style& knobStyle)
    {
        auto knob = std::make_unique<Knob>(*ui, &root(), &animator, knobStyle);
        knob->SetPosition({30, 30});
        listenTo(*knob, "k");
        ui->Paint();
        return knob;
    }
    /// A point around the knob's middle, (50, 50) of the root's.
    static Point around(float turns, float radius)
    {
        const float radians = turns * 2 * std::numbers::pi_v<float>;
        return {50 + radius * std::sin(radians), 50 - radius * std::cos(radians)};
    }

    std::unique_ptr<Bitmap> back = filled(*ui, 40, 40, Color::Rgb(0x404040));
    std::unique_ptr<Bitmap> pointer = filled(*ui, 40, 40, Color{});
    Knob::Style style{*ui};
    Knob::Style ringStyle{*ui};
};

TEST_F(KnobTest, AnglesFollowRangeAndOffset)
{
    struct Row {
        float rotation, offset;
        int value;
        float angle;
    };
    const auto knob = makeKnob(style);
    knob->MaxValue.assign(300);
    for (const Row& row :
         {Row{300, 0, 0, 210.0f / 360}, Row{300, 0, 300, 150.0f / 360}, Row{300, 0, 150, 0},
          Row{70, 90, 0, 55.0f / 360}, Row{70, 90, 300, 125.0f / 360}, Row{180, -90, 75, 225.0f / 360}}) {
        knob->Rotation.assign(row.rotation);
        knob->RotationOffset.assign(row.offset);
        const float angle = knob->AngleOfValue(row.value);
        EXPECT_NEAR(std::remainder(angle - row.angle, 1.0f), 0.0f, 1e-5f);
        EXPECT_EQ(knob->ValueOfAngle(angle), row.value);
    }
    EXPECT_NEAR(knob->AngleOfPoint({30, 20}), 0.25f, 1e-6f);
    EXPECT_EQ(knob->AngleOfPoint({20, 20}), 0.0f);
}

TEST_F(KnobTest, ABodyDragComesBackTheWholeWay)
{
    const auto knob = makeKnob(style);
    knob->Accelerated.assign(false);
    knob->Value.assign(4000);
    press({40, 50});
    move({40, -950});
    EXPECT_EQ(knob->Value.value(), 4096);
    move({40, 40});
    EXPECT_EQ(knob->Value.value(), 4096);
    move({40, 70});  // 20 below the press
    EXPECT_NEAR(knob->Value.value(), 4000 - 4096 / 10, 1);
    release({40, 70});
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(KnobTest, ATurnedKnobRepaintsItselfOnly)
{
    const auto knob = makeKnob(style);
    knob->Value.assign(2048);
    EXPECT_EQ(root().DirtyRect(), knob->GetBounds());
    ui->Paint();
    EXPECT_EQ(ui->Picture().GetPixel({50, 35}), Color::White());  // points up
    EXPECT_EQ(ui->Picture().GetPixel({50, 65}), Color::Rgb(0x404040));
    knob->Value.assign(2048);
    EXPECT_TRUE(root().DirtyRect().IsEmpty());
}

TEST_F(KnobTest, RotationIsExactByQuartersAndKeepsAllInk)
{
    const auto picture = filled(*ui, 21, 21, Color{});
    picture->FillRect({9, 3, 12, 9}, Color::Rgb(0x80C0FF));
    const auto ink = [](const Bitmap& bitmap) {
        long sum = 0;
        for (int i = 0; i < 21 * 21; ++i)
            sum += 255 - static_cast<long>(bitmap.GetPixels()[i] >> 24);
        return sum;
    };
    Bitmap turned(ui->Backing());
    for (int quarter = 0; quarter < 4; ++quarter) {
        RotateBitmap(turned, *picture, 0.25f * static_cast<float>(quarter));
        for (int y = 0; y < 21; ++y)
            for (int x = 0; x < 21; ++x) {
                const Point from[]{{float(x), float(y)},
                                   {float(y), float(20 - x)},
                                   {float(20 - x), float(20 - y)},
                                   {float(20 - y), float(x)}};
                ASSERT_EQ(turned.GetPixel({float(x), float(y)}), picture->GetPixel(from[quarter]));
            }
    }
    for (const float turns : {0.03f, 0.1f, 0.19f, 0.4f}) {
        RotateBitmap(turned, *picture, turns);
        EXPECT_NEAR(static_cast<double>(ink(turned)), 18 * 255, 18 * 255 * 0.04) << turns;
        for (int i = 0; i < 21 * 21; ++i) {
            const std::uint32_t pixel = turned.GetPixels()[i];
            ASSERT_LE(pixel & 255, 255 - (pixel >> 24));  // no colour above its alpha
        }
    }
}

TEST_F(KnobTest, WhatShowsTheValueIsFaintWhileDisabledAndNeverTwice)
{
    struct Row {
        bool enabled;
        int opacity, white;  // of 255, as the pointer lies over black
    };
    back->FillRect({0, 0, 40, 40}, Color::Black());
    const auto knob = makeKnob(style);
    knob->Value.assign(2048);  // up
    Control ground(*ui, &root());
    ground.SetBounds(0, 0, 200, 100);
    ground.BackgroundColor.assign(Color::Black());
    root().SetChildIndex(ground, 0);
    for (const Row& row :
         {Row{true, 255, 255}, Row{false, 255, 102}, Row{false, 128, 128}, Row{true, 255, 255}}) {
        knob->Enabled.assign(row.enabled);
        knob->Opacity.assign(row.opacity);
        ui->Paint();
        EXPECT_NEAR(ui->Picture().GetPixel({50, 36}).r, row.white, 2) << row.enabled << row.opacity;
    }
}

TEST_F(KnobTest, ARingCatchesTheMouseInItsBandOnly)
{
    const auto knob = makeKnob(ringStyle);
    knob->Rotation.assign(70);
    knob->RotationOffset.assign(90);  // 55 to 125 degrees, 10 more on each side
    struct Row {
        float degrees, radius;
        bool hits;
    };
    for (const Row& row : {Row{90, 15, true}, Row{46, 15, true}, Row{44, 15, false}, Row{134, 15, true},
                           Row{136, 15, false}, Row{270, 15, false}, Row{90, 9, false}, Row{90, 19.9f, true}})
        EXPECT_EQ(root().HitChild(around(row.degrees / 360, row.radius)) == knob.get(), row.hits)
            << row.degrees;
}

TEST_F(KnobTest, AClickOnARingGoesThereInOneGesture)
{
    const auto knob = makeKnob(ringStyle);
    knob->MaxValue.assign(100);
    click(around(0.25f, 15));
    EXPECT_EQ(knob->Value.value(), 80);  // (90 + 150) / 300
    EXPECT_EQ(takeLog(), (EventLog{"k(", "k80", "k)"}));
    wait();
    press(around(0.1f, 15));
    knob->CancelMouse();
    EXPECT_EQ(takeLog(), (EventLog{"k(", "k)"}));
}

TEST_F(KnobTest, ThePointerTurnsTheKnobAndNeverLeapsOverTheAxis)
{
    const auto knob = makeKnob(style);
    knob->MaxValue.assign(300);  // a step for each degree
    knob->Value.assign(150);
    press(around(0, 15));
    move(around(0.1f, 15));
    EXPECT_EQ(knob->Value.value(), 186);
    move({50, 50});  // the axis
    move(around(0.6f, 15));
    EXPECT_EQ(knob->Value.value(), 186);  // 0.6 is the value 6: too far
    move(around(0.15f, 15));
    EXPECT_EQ(knob->Value.value(), 204);
    move(around(-0.4f, 15));  // the value 6, more than half of the range away
    EXPECT_EQ(knob->Value.value(), 204);
    release(around(0, 15));
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(KnobTest, ResetsWithTheKeyOnly)
{
    struct Row {
        const char* what;
        int value, flags;
        bool always;
        EventLog expected;
    };
    const auto knob = makeKnob(style);
    knob->DefaultValue.assign(100);
    int changes = 0;
    on(knob->OnValueChanged, [&] { ++changes; });
    for (const Row& row :
         {Row{"reset", 7, InputFlags::ctrl, false, {"k(", "k100", "k)"}},
          Row{"at its default", 100, InputFlags::ctrl, false, {"k(", "k)"}},
          Row{"at its default, always", 100, InputFlags::ctrl, true, {"k(", "k100", "k)"}},
          Row{"no key", 7, 0, true, {"k(", "k)"}},
          Row{"double-click", 7, InputFlags::ctrl | InputFlags::doubleClick, true, {"k(", "k)"}}}) {
        knob->Value.assign(row.value);
        knob->ResetAlways.assign(row.always);
        changes = 0;
        click({40, 60}, row.flags);
        EXPECT_EQ(takeLog(), row.expected) << row.what;
        EXPECT_EQ(changes, static_cast<int>(row.expected.size()) - 2) << row.what;
        wait();
    }
}

TEST_F(KnobTest, TheWheelIsAGestureThatTurnsAroundAtOnce)
{
    const auto knob = makeKnob(style);
    knob->Value.assign(4000);
    EXPECT_TRUE(scroll({40, 60}, {0, 0.1f}));  // 409 steps, past the end
    EXPECT_EQ(knob->Value.value(), 4096);
    scroll({40, 60}, {0, -0.1f}, {0, -30});
    EXPECT_EQ(knob->Value.value(), 4096 - 409);
    EXPECT_EQ(listener.OpenGestures(), 1);
    ui->AdvanceTime(600);
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(KnobTest, TheWheelGoesTheWayThePointerTurns)
{
    const auto ring = makeKnob(ringStyle);
    ring->MaxValue.assign(10);
    ring->Value.assign(5);
    ring->Rotation.assign(70);
    ring->RotationOffset.assign(90);  // the least value is on top
    scroll(around(0.25f, 15));
    EXPECT_EQ(ring->Value.value(), 4);
}

TEST_F(KnobTest, ASliderIsDraggedByItsHandleAndClickedBesideIt)
{
    const auto track = filled(*ui, 10, 60, Color::Black());
    const auto handle = filled(*ui, 10, 10, Color::White());
    Switch::Style sliderStyle(*ui);
    sliderStyle.track = track.get();
    sliderStyle.handle = handle.get();
    Switch slider(*ui, &root(), &animator, sliderStyle);
    slider.SetPosition({100, 20});
    slider.MaxValue.assign(100);  // two steps a unit over a way of 50
    listenTo(slider, "s");
    EXPECT_EQ(slider.HandleRect(), (Rect{0, 50, 10, 60}));
    click({105, 50});
    EXPECT_EQ(slider.Value.value(), 50);  // the middle, 25 above the handle's lowest
    EXPECT_EQ(takeLog(), (EventLog{"s(", "s50", "s)"}));
    wait();
    press({105, 50});
    move({105, 44});  // the first move counts 0
    move({105, 34});
    EXPECT_EQ(slider.Value.value(), 70);
    release({105, 34});
    click({105, 70}, InputFlags::ctrl);
    EXPECT_EQ(slider.Value.value(), 0);
    wait();
    slider.Direction.assign(Direction::Right);
    slider.SetBounds(100, 20, 60, 10);
    click({155, 25});
    EXPECT_EQ(slider.Value.value(), 100);
    EXPECT_EQ(listener.OpenGestures(), 0);
}

}  // namespace gui
