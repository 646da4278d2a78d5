#include "gallery/GalleryPage.h"

#include "gui/ToggleButton.h"

namespace gallery {

namespace {

using gui::Alignment;
using gui::Point;
using Hand = Pose::Hand;

class ButtonsPage : public GalleryPage {
public:
    ButtonsPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddLooks();
        AddLargeLooks();
        AddBehaviour();
    }

private:
    struct State {
        Hand hand = Hand::Away;
        bool on = false;
        bool enabled = true;
    };

    void AddLooks();
    void AddLargeLooks();
    void AddBehaviour();
    void AddLookRow(ButtonLook look, Point at);
    void AddPosed(ButtonLook look, Point at, Point wanted, State shownState);
    Pose::Maker Posed(ButtonLook look, Point wanted, State shownState, const std::string& text = {});
};

/// The sizes at which the editor shows them; 0 for the style's own.
Point SizeOf(ButtonLook look)
{
    switch (look) {
    case ButtonLook::Generic:
    case ButtonLook::Menu:
    case ButtonLook::UpDown:
    case ButtonLook::MenuDark:
    case ButtonLook::Bar:
    case ButtonLook::SlotLevel:
    case ButtonLook::SlotSource:
        return {58, 18};
    case ButtonLook::SlotBypass:
        return {18, 18};
    default:
        return {};
    }
}

const char* TextOf(ButtonLook look)
{
    switch (look) {
    case ButtonLook::Generic:
        return "Serial";
    case ButtonLook::Menu:
        return "1/4";
    case ButtonLook::UpDown:
        return "16";
    case ButtonLook::MenuDark:
        return "Tape";
    case ButtonLook::Bar:
        return "Copy";
    case ButtonLook::SlotLevel:
        return "50.0 %";
    case ButtonLook::SlotSource:
        return "XLFO 1";
    default:
        return "";
    }
}

Pose::Maker ButtonsPage::Posed(ButtonLook look, Point wanted, State shownState, const std::string& text)
{
    return [&styles = parts.styles, look, wanted, shownState, text](gui::UserInterface& ui,
                                                                    gui::Control* parent) {
        auto made = std::make_unique<gui::Button>(ui, parent, nullptr, &styles.Button(look));
        if (wanted.x > 0.0f)
            made->SetSize(wanted);
        made->SetText(text);
        made->On.assign(shownState.on);
        made->Enabled.assign(shownState.enabled);
        return made;
    };
}

void ButtonsPage::AddPosed(ButtonLook look, Point at, Point wanted, State shownState)
{
    const Point shown = wanted.x > 0.0f ? wanted : parts.styles.Button(look).DefaultSize();
    AddPose(at, Posed(look, wanted, shownState, TextOf(look)), shownState.hand, shown * 0.5f);
}

constexpr float columns[] = {116.0f, 180.0f, 244.0f, 308.0f, 372.0f};

void ButtonsPage::AddLookRow(ButtonLook look, Point at)
{
    const State states[] = {
        {}, {Hand::Over}, {Hand::Pressing}, {Hand::Away, true}, {Hand::Away, false, false}};
    AddText({at.x + 10, at.y + 2.5f}, GalleryStyles::NameOf(look), Alignment::Left, 7.5f, gui::Palette::ink);
    if (GalleryStyles::IsForBar(look))
        AddPainting(
            {at.x + 108, at.y - 2, at.x + 438, at.y + 20},
            [](gui::Canvas& canvas, const gui::Rect& area) { canvas.FillRect(area, gui::Palette::bar); });
    const Point wanted = SizeOf(look);
    const float height = wanted.y > 0.0f ? wanted.y : parts.styles.Button(look).DefaultSize().y;
    for (int i = 0; i < 5; ++i)
        AddPosed(look, {at.x + columns[i], at.y + (18.0f - height) * 0.5f}, wanted, states[i]);
}

void ButtonsPage::AddLooks()
{
    const ButtonLook looks[2][10] = {
        {ButtonLook::Generic, ButtonLook::Menu, ButtonLook::UpDown, ButtonLook::MenuDark, ButtonLook::Save,
         ButtonLook::Invert, ButtonLook::Lock, ButtonLook::Enable, ButtonLook::AddSlot, ButtonLook::Bar},
        {ButtonLook::SlotLevel, ButtonLook::SlotSource, ButtonLook::SlotBypass, ButtonLook::Dry,
         ButtonLook::ComponentEnable, ButtonLook::Hotspot, ButtonLook::Hide, ButtonLook::SaveSource,
         ButtonLook::Close, ButtonLook::Sign}};
    const char* const heads[] = {"Rest", "Mouse over", "Pressed", "On", "Disabled"};
    for (int side = 0; side < 2; ++side) {
        const float left = side == 0 ? 12.0f : 469.0f;
        AddCard({left, 12, left + 445, 278}, side == 0 ? "Buttons" : "Small parts",
                side == 0 ? gui::Palette::display : gui::Palette::panel);
        for (int i = 0; i < 5; ++i)
            AddText({left + columns[i], 19}, heads[i], Alignment::Left, 7.0f);
        for (int i = 0; i < 10; ++i)
            AddLookRow(looks[side][i], {left, 38.0f + 24.0f * static_cast<float>(i)});
    }
}

void ButtonsPage::AddLargeLooks()
{
    AddCard({12, 290, 620, 444}, "At their own size: at rest, mouse over, pressed");
    struct Large {
        ButtonLook look;
        float left, top, step;
    };
    const Large larges[] = {{ButtonLook::Add, 22, 318, 30},          {ButtonLook::AddStep, 124, 318, 24},
                            {ButtonLook::SourceDrag, 124, 362, 30},  {ButtonLook::ScrollLeft, 124, 398, 22},
                            {ButtonLook::ScrollRight, 176, 398, 22}, {ButtonLook::XY, 228, 318, 53},
                            {ButtonLook::Component, 390, 318, 76}};
    for (const Large& large : larges)
        for (int i = 0; i < 3; ++i) {
            if (large.step < 23.0f && i == 2)
                continue;  // two states are all they have
            const State shownState{i == 0 ? Hand::Away : i == 1 ? Hand::Over : Hand::Pressing};
            AddPosed(large.look, {large.left + large.step * static_cast<float>(i), large.top}, {},
                     shownState);
        }
    for (int i = 0; i < 3; ++i) {
        const float top = 376.0f + 20.0f * static_cast<float>(i);
        AddPainting({232, top, 336, top + 18}, [&styles = parts.styles, i](gui::Canvas& canvas,
                                                                           const gui::Rect&) {
            const char* const names[] = {"Normal", "Active", "Down"};
            canvas.DrawBitmapAt(styles.Picture(std::string("ButtonModulation") + names[i]), {});
            canvas.DrawBitmapAt(styles.Picture(i == 2 ? "ButtonModulationOn" : "ButtonModulationOff"), {});
        });
        AddText({284, top + 3}, "Modulation", Alignment::Centre, 8.0f, gui::Palette::white);
    }
}

void ButtonsPage::AddBehaviour()
{
    AddCard({632, 290, 914, 444}, "Live");
    const PageParts& p = parts;
    const auto toggle = [&](const gui::Rect& bounds, const char* text) -> gui::ToggleButton& {
        auto& made = AddStyled<gui::ToggleButton>(bounds.Origin(), p.styles.Button(ButtonLook::Bar));
        made.SetSize(bounds.Size());
        made.SetText(text);
        return made;
    };
    AddPainting({642, 314, 904, 342},
                [](gui::Canvas& canvas, const gui::Rect& area) { canvas.FillRect(area, gui::Palette::bar); });
    gui::ToggleButton& left = toggle({647, 319, 732, 337}, "Left/Right");
    gui::ToggleButton& middle = toggle({732, 319, 815, 337}, "Mid/Side");
    gui::ToggleButton& right = toggle({815, 319, 899, 337}, "Mono");
    left.AddButton(middle);
    left.AddButton(right);
    left.Value.assign(1);

    AddText({642, 357}, "Latches, or held: only as long", Alignment::Left, 7.5f);
    auto& freeze = AddStyled<gui::ToggleButton>({886, 354}, p.styles.Button(ButtonLook::Lock));
    freeze.SetOverlay(&p.styles.Picture("IconFreezeOff"), &p.styles.Picture("IconFreezeOn"));
    freeze.Toggles.assign(true);
    freeze.HoldToToggle.assign(true);

    gui::Button& lines =
        AddButton({642, 380, 762, 415}, ButtonLook::AddStep, "Two lines of text in one button");
    lines.LineCount.assign(2);
    AddButton({774, 380, 904, 398}, ButtonLook::Generic, "A text that is too long for it");
    Caption& count = AddText({642, 425}, "Not clicked yet");
    AddButton({774, 402, 904, 420}, ButtonLook::Generic, "Click", [&count, clicks = 0]() mutable {
        ++clicks;
        count.SetString("Clicked " + std::to_string(clicks) + (clicks == 1 ? " time" : " times"));
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakeButtonsPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<ButtonsPage>(parts, parent);
}

}  // namespace gallery
