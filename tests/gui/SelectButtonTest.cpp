#include "gui/SelectButton.h"
#include "gui/IntValueButton.h"
#include "support/ControlsFixture.h"

namespace gui {

/// Menus whose choice the test makes, and texts without letters.
class MenuPlatform : public PlainPlatform {
public:
    class Popup : public PopupMenu {
    public:
        Popup(UserInterface& ui, MenuPlatform& menuPlatform) : PopupMenu(ui), platform(menuPlatform) {}
        MenuItem* Show(Menu& menu, const Rect& rect) override
        {
            platform.shownAt = rect;
            return platform.choose ? platform.choose(menu) : nullptr;
        }

    private:
        MenuPlatform& platform;
    };
    class Letterless : public Text {
    public:
        using Text::Text;
        const Bitmap& GetBitmap() override { return bitmap; }
        float GetHeight() override { return 10; }
        float GetBaselineShift() override { return 0; }
        float GetWidth() override { return 10; }
    };

    std::unique_ptr<PopupMenu> CreatePopupMenu() override { return std::make_unique<Popup>(*ui, *this); }
    std::unique_ptr<Text> CreateText() override { return std::make_unique<Letterless>(ui->Backing()); }

    UserInterface* ui = nullptr;
    std::function<MenuItem*(Menu&)> choose;
    Rect shownAt;
};

class SelectButtonTest : public testing::Test {
protected:
    SelectButtonTest()
    {
        platform.ui = &ui;
        button = make();
        button->SetListener(&listener);
        listener.names.emplace(button.get(), "s");
    }
    std::unique_ptr<SelectButton> make()
    {
        auto select = std::make_unique<SelectButton>(ui, &ui.GetRootControl(), nullptr);
        select->Bounds.assign({10, 10, 60, 30});
        for (const char* text : {"one", "two", "three", "four"})
            select->AddEntry(text);
        select->EntryOf(2)->Enabled.assign(false);
        return select;
    }
    void click()
    {
        ui.GetRootControl().WindowMouseDown(0, {20, 20}, InputFlags::leftButton);
        ui.GetRootControl().WindowMouseUp(0, {20, 20}, 0);
    }
    void notch(float direction)
    {
        ui.GetRootControl().WindowScroll({20, 20}, 0, {0, 0.01f * direction}, {0, 30 * direction}, 1);
    }
    std::string text() { return button->Label()->String.value(); }
    static MenuItem* pick(Menu& menu, int index)
    {
        MenuItem& item = *menu.GetItem(index);
        item.ItemSelected(item);
        return &item;
    }

    MenuPlatform* made = new MenuPlatform;
    MenuPlatform& platform = *made;
    OffscreenInterface ui{std::unique_ptr<PlatformDelegate>(made), {200, 100}};
    EventLog log;
    RecordingListener listener{log};
    std::unique_ptr<SelectButton> button;
};

TEST_F(SelectButtonTest, AChoiceIsOneGesture)
{
    EXPECT_EQ(text(), "one");
    platform.choose = [](Menu& menu) {
        EXPECT_TRUE(menu.GetItem(0)->Checked.value());
        return pick(menu, 3);
    };
    click();
    EXPECT_EQ(platform.shownAt, (Rect{10, 10, 60, 30}));
    EXPECT_EQ(text(), "four");
    EXPECT_EQ(log, (EventLog{"s(", "s3", "s)"}));
    EXPECT_EQ(ui.GetRootControl().CapturedControl(), nullptr);
}

TEST_F(SelectButtonTest, TheWheelWalksDownTheListPastDisabledEntries)
{
    struct Row {
        float direction;
        int expected;
    };
    for (const Row& row : {Row{-1, 1}, Row{-1, 3}, Row{-1, 3}, Row{1, 1}, Row{1, 0}, Row{1, 0}}) {
        notch(row.direction);
        EXPECT_EQ(button->Value.value(), row.expected);
        ui.AdvanceTime(600);
    }
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(SelectButtonTest, LinkedButtonsThatDifferSaySo)
{
    auto other = make();
    other->Value.assign(1);
    button->LinkWith(*other);
    EXPECT_EQ(text(), "(Multiple)");
    button->Value.assign(1);
    EXPECT_EQ(text(), "two");
    button->Value.assign(3);
    other.reset();
    EXPECT_EQ(text(), "four");
}

TEST_F(SelectButtonTest, ItMayDieWhileItsMenuIsOpen)
{
    platform.choose = [this](Menu& menu) {
        button.reset();
        return pick(menu, 1);
    };
    click();
    EXPECT_EQ(button, nullptr);
    EXPECT_EQ(listener.OpenGestures(), 0);
}

TEST_F(SelectButtonTest, ANumberIsItsText)
{
    IntValueButton number(ui, &ui.GetRootControl(), nullptr);
    EXPECT_EQ(number.Label()->String.value(), "0");
    number.MinValue.assign(-20);
    number.Value.assign(-7);
    EXPECT_EQ(number.Label()->String.value(), "-7");
}

}  // namespace gui
