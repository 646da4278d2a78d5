#include "gui/ButtonStyle.h"
#include "gui/LevelButton.h"
#include "gui/ToggleButton.h"
#include "support/ControlsFixture.h"

namespace gui {

class ButtonTest : public ControlsFixture {
protected:
    template <class T = Button>
    std::unique_ptr<T> make(Rect bounds = {10, 10, 50, 30})
    {
        auto button = std::make_unique<T>(*ui, &root(), &animator);
        button->Bounds.assign(bounds);
        listenTo(*button, "b");
        return button;
    }
};

TEST_F(ButtonTest, LooksPressedWhileTheMouseIsOverIt)
{
    using State = Button::VisualState;
    for (const auto behavior : {Button::ButtonStyle::Plain, Button::ButtonStyle::KeepsPressed}) {
        const auto button = make();
        button->Behavior.assign(behavior);
        int clicks = 0;
        on(button->OnClick, [&] { ++clicks; });
        move({20, 20});
        EXPECT_EQ(button->State(), State::Hover);
        press({20, 20});
        EXPECT_EQ(button->State(), State::Down);
        move({100, 20});
        EXPECT_EQ(button->State(), behavior == Button::ButtonStyle::Plain ? State::Normal : State::Down);
        move({20, 20});
        EXPECT_EQ(button->State(), State::Down);
        release({20, 20});
        EXPECT_EQ(button->State(), State::Hover);
        EXPECT_EQ(clicks, 1);
        press({20, 20});
        release({100, 20});
        EXPECT_EQ(button->State(), State::Normal);
        EXPECT_EQ(clicks, 1);
        EXPECT_EQ(listener.OpenGestures(), 0);
        wait();
    }
}

TEST_F(ButtonTest, ALongPressIsMomentary)
{
    struct Row {
        bool toggles, holds, wasOn;
        std::uint32_t ms;
        bool expected;
    };
    for (const Row& row : {Row{true, true, false, 500, true}, Row{true, true, false, 501, false},
                           Row{true, true, true, 501, false}, Row{true, false, false, 800, true},
                           Row{true, false, true, 1, false}, Row{false, true, false, 800, false}}) {
        const auto button = make();
        button->Toggles.assign(row.toggles);
        button->HoldToToggle.assign(row.holds);
        button->On.assign(row.wasOn);
        press({20, 20});
        EXPECT_EQ(button->On.value(), row.wasOn || (row.holds && row.toggles));
        ui->AdvanceTime(row.ms);
        release({20, 20});
        EXPECT_EQ(button->On.value(), row.expected) << row.ms;
        wait();
    }
}

TEST_F(ButtonTest, APressThatIsTakenAwayTogglesNothing)
{
    const auto button = make();
    button->Toggles.assign(true);
    press({20, 20});
    root().SetCapture(nullptr);
    EXPECT_FALSE(button->IsPressed());
    EXPECT_EQ(listener.OpenGestures(), 0);
    release({20, 20});
    EXPECT_FALSE(button->On.value());
}

TEST_F(ButtonTest, AHandlerMayDeleteIt)
{
    auto button = make();
    button->Toggles.assign(true);
    on(button->OnClick, [&] { button.reset(); });
    click({20, 20});
    EXPECT_EQ(button, nullptr);
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(ButtonTest, PicturesFollowStateAndFade)
{
    Bitmap normal(ui->Backing()), active(ui->Backing()), down(ui->Backing()), lit(ui->Backing());
    const auto fill = [](Bitmap& bitmap, Color color) {
        bitmap.SetSize(40, 20);
        bitmap.FillRect({0, 0, 40, 20}, color);
    };
    fill(normal, Color::Rgb(0x000000));
    fill(active, Color::Rgb(0xC80000));
    fill(down, Color::Rgb(0x0000FF));
    fill(lit, Color::Rgb(0x00FF00));
    Button::Style style(*ui);
    style.pictures = {&normal, &active, &down};
    style.onPictures.normal = &lit;
    Button button(*ui, &root(), &animator, &style);
    button.SetPosition({10, 10});
    EXPECT_EQ(button.GetSize(), (Point{40, 20}));
    const auto shown = [this] {
        ui->Paint();
        return ui->Picture().GetPixel({20, 20});
    };
    EXPECT_EQ(shown(), Color::Rgb(0x000000));
    ui->AdvanceTime(10);
    move({20, 20});
    ui->AdvanceTime(50);  // of 100
    EXPECT_NEAR(shown().r, 100, 25);
    ui->AdvanceTime(70);
    EXPECT_EQ(shown(), Color::Rgb(0xC80000));
    press({20, 20});
    EXPECT_EQ(root().DirtyRect(), button.GetBounds());
    EXPECT_EQ(shown(), Color::Rgb(0x0000FF));
    release({20, 20});
    EXPECT_EQ(shown(), Color::Rgb(0xC80000));
    move({100, 50});
    ui->AdvanceTime(150);  // of 300
    EXPECT_NEAR(shown().r, 100, 12);
    ui->AdvanceTime(200);
    EXPECT_EQ(shown(), Color::Rgb(0x000000));
    button.On.assign(true);
    EXPECT_EQ(shown(), Color::Rgb(0x00FF00));
    EXPECT_EQ(animator.RunningCount(), 0);
}

TEST_F(ButtonTest, AToggleStandsForItsValue)
{
    struct Row {
        int onValue, value;
        bool on;
        int afterClick;
    };
    for (const Row& row : {Row{1, 0, false, 1}, Row{1, 1, true, 0}, Row{0, 0, true, 1}, Row{0, 1, false, 0},
                           Row{3, 0, false, 3}, Row{3, 2, true, 0}}) {
        const auto toggle = make<ToggleButton>();
        toggle->MaxValue.assign(3);
        toggle->OnValue.assign(row.onValue);
        toggle->Value.assign(row.value);
        EXPECT_EQ(toggle->On.value(), row.on);
        takeLog();
        click({20, 20});
        EXPECT_EQ(toggle->Value.value(), row.afterClick);
        ASSERT_EQ(log.size(), 3u);
        EXPECT_EQ(takeLog()[1].substr(1), std::to_string(row.afterClick));
        wait();
    }
}

TEST_F(ButtonTest, OneOfARowIsOn)
{
    const auto owner = make<ToggleButton>({10, 10, 30, 30});
    Button second(*ui, &root(), &animator), third(*ui, &root(), &animator);
    second.Bounds.assign({30, 10, 50, 30});
    third.Bounds.assign({50, 10, 70, 30});
    owner->AddButton(second);
    owner->AddButton(third);
    EXPECT_EQ(owner->MaxValue.value(), 2);
    const auto states = [&] {
        return std::vector<bool>{owner->On.value(), second.On.value(), third.On.value()};
    };
    EXPECT_EQ(states(), (std::vector<bool>{true, false, false}));
    click({60, 20});
    EXPECT_EQ(states(), (std::vector<bool>{false, false, true}));
    EXPECT_EQ(takeLog(), (EventLog{"b(", "b2", "b)"}));
    wait();
    click({60, 20});  // stays on
    EXPECT_EQ(states(), (std::vector<bool>{false, false, true}));
    wait();
    owner->Value.assign(1);
    EXPECT_EQ(states(), (std::vector<bool>{false, true, false}));
    click({20, 20});
    EXPECT_EQ(states(), (std::vector<bool>{true, false, false}));
    second.Opacity.assign(50);
    owner->Opacity.assign(100);
    EXPECT_EQ(third.Opacity.value(), 100);
    EXPECT_EQ(second.Opacity.value(), 50);
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(ButtonTest, ALevelFillsUpWithItsValue)
{
    const auto level = make<LevelButton>({0, 0, 110, 20});
    level->MaxValue.assign(100);
    level->Start.assign(6);
    level->FillMargin.assign(2);
    EXPECT_FLOAT_EQ(level->FillWidth(), 8);
    level->Value.assign(50);
    EXPECT_FLOAT_EQ(level->FillWidth(), 58);  // (110 - 6 - 4) / 2 + 2 + 6
}

TEST_F(ButtonTest, AValueButtonGivesACrossDragToItsParent)
{
    Control panel(*ui, &root());
    panel.Bounds.assign({10, 10, 60, 60});
    panel.Movable.assign(true);
    const auto field = make<FloatValueButton>({5, 5, 45, 25});
    field->Parent.assign(&panel);
    field->MaxValue.assign(10);
    press({30, 25});
    move({36, 25});
    move({56, 25});
    EXPECT_EQ(root().CapturedControl(), &panel);
    EXPECT_EQ(listener.OpenGestures(), 0);
    release({56, 25});
    EXPECT_EQ(panel.GetLeft(), 36);
    wait();
    field->Value.assign(5);
    press({60, 25});
    move({60, 5});  // a step for 20 units
    move({80, 5});
    EXPECT_EQ(field->Value.value(), 6);
    release({80, 5});
    EXPECT_EQ(panel.GetLeft(), 36);
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(ButtonTest, OfADisabledButtonWhatStandsOnItIsFaintOrElseItsPlate)
{
    const auto filled = [this](float width, float height, Color color) {
        auto bitmap = std::make_unique<Bitmap>(ui->Backing());
        bitmap->SetSize(width, height);
        bitmap->FillRect({0, 0, width, height}, color);
        return bitmap;
    };
    const auto plate = filled(40, 20, Color::White());
    const auto mark = filled(8, 8, Color::Black());
    Button::Style style{*ui};
    style.pictures.normal = plate.get();
    Control ground(*ui, &root());
    ground.SetBounds(0, 0, 200, 100);
    ground.BackgroundColor.assign(Color::Black());
    const auto button = make();
    button->SetStyle(style);
    struct Row {
        bool enabled, marked;
        int onPlate, onMark;
    };
    for (const Row& row : {Row{true, false, 255, 255}, Row{false, false, 102, 102}, Row{true, true, 255, 0},
                           Row{false, true, 255, 153}}) {
        button->Enabled.assign(row.enabled);
        button->SetOverlay(row.marked ? mark.get() : nullptr);
        ui->Paint();
        EXPECT_NEAR(ui->Picture().GetPixel({45, 20}).r, row.onPlate, 2) << row.enabled << row.marked;
        EXPECT_NEAR(ui->Picture().GetPixel({14, 20}).r, row.onMark, 2) << row.enabled << row.marked;
    }
}

}  // namespace gui
