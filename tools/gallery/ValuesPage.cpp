#include "gallery/GalleryPage.h"

#include "gui/FloatValueButton.h"
#include "gui/IntValueButton.h"
#include "gui/LevelButton.h"
#include "gui/SelectButton.h"
#include "gui/Switch.h"

#include <cmath>
#include <cstdio>

namespace gallery {

namespace {

using gui::Alignment;
using gui::Point;
using Hand = Pose::Hand;

/// One decimal, whatever the locale.
std::string Tenths(int tenths)
{
    const int whole = std::abs(tenths) / 10, rest = std::abs(tenths) % 10;
    std::string text = tenths < 0 ? "-" : "";
    return text.append(std::to_string(whole)).append(".").append(std::to_string(rest));
}

class ValuesPage : public GalleryPage {
public:
    ValuesPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddSliders();
        AddSteps();
        AddFields();
        AddLevels();
        AddSelects();
        AddLights();
    }

private:
    void AddSliders();
    void AddSteps();
    void AddFields();
    void AddLevels();
    void AddSelects();
    void AddLights();
    void PoseSlider(Point at, Hand hand, Point handAt, bool enabled = true);
};

void ValuesPage::PoseSlider(Point at, Hand hand, Point handAt, bool enabled)
{
    AddPose(
        at,
        [&styles = parts.styles, enabled](gui::UserInterface& ui, gui::Control* parent) {
            auto slider = std::make_unique<gui::Switch>(ui, parent, nullptr, styles.Slider());
            slider->SetSize({180, 18});
            slider->Direction.assign(gui::Direction::Right);
            slider->Value.assign(2048);
            slider->Enabled.assign(enabled);
            return slider;
        },
        hand, handAt);
}

void ValuesPage::AddSliders()
{
    AddCard({12, 12, 452, 218}, "Sliders");
    struct Row {
        const char* name;
        Hand hand;
        Point at;
        bool enabled;
    };
    const Row rows[] = {{"Mouse on the track", Hand::Over, {30, 9}, true},
                        {"Mouse on the handle", Hand::Over, {90, 9}, true},
                        {"Dragged", Hand::Pressing, {90, 9}, true},
                        {"Disabled", Hand::Away, {}, false}};
    const auto live = [this](gui::Rect bounds, gui::Direction direction, int value) -> gui::Switch& {
        auto& slider = AddStyled<gui::Switch>(bounds.Origin(), parts.styles.Slider());
        slider.Direction.assign(direction);
        slider.SetSize(bounds.Size());
        slider.DefaultValue.assign(2048);
        slider.Value.assign(value);
        return slider;
    };
    AddText({22, 44}, "Live, to the right", Alignment::Left, 7.5f);
    live({128, 42, 308, 60}, gui::Direction::Right, 2900);
    AddText({22, 70}, "Live, to the left", Alignment::Left, 7.5f);
    live({128, 68, 308, 86}, gui::Direction::Left, 2900);
    for (int i = 0; i < 4; ++i) {
        const float top = 94.0f + 26.0f * static_cast<float>(i);
        AddText({22, top + 2}, rows[i].name, Alignment::Left, 7.5f);
        PoseSlider({128, top}, rows[i].hand, rows[i].at, rows[i].enabled);
    }
    AddText({356, 46}, "Up", Alignment::Centre, 7.0f);
    AddText({416, 46}, "Down, 5 steps", Alignment::Centre, 7.0f);
    const auto upright = [&](float left, gui::Direction direction) -> gui::Switch& {
        auto& slider = AddStyled<gui::Switch>({left, 64}, parts.styles.StepSlider());
        slider.Direction.assign(direction);
        slider.SetSize({26, 102});
        return slider;
    };
    upright(343, gui::Direction::Up).Value.assign(2900);
    gui::Switch& stepped = upright(403, gui::Direction::Down);
    stepped.MaxValue.assign(4);
    stepped.Value.assign(1);
}

void ValuesPage::AddSteps()
{
    AddCard({464, 12, 914, 218}, "A sequence of steps");
    const int values[] = {700,  2048, 3600, 1600, 2048, 2900, 3300, 400,
                          2300, 1100, 2700, 3900, 2048, 900,  1800, 2500};
    for (int i = 0; i < 16; ++i) {
        auto& step =
            AddStyled<gui::Switch>({472.0f + 27.0f * static_cast<float>(i), 56}, parts.styles.StepSlider());
        step.Direction.assign(gui::Direction::Up);
        step.SetSize({27, 102});
        step.DefaultValue.assign(2048);
        step.Value.assign(values[i]);
        step.Highlighted.assign(i == 5);
        AddText({485.5f + 27.0f * static_cast<float>(i), 162}, std::to_string(i + 1), Alignment::Centre,
                7.0f);
    }
    AddText({474, 196}, "Ctrl and a click go to the middle; Shift drags finely", Alignment::Left, 7.0f);
}

void ValuesPage::AddFields()
{
    AddCard({12, 230, 308, 444}, "Value fields, live");
    const auto field = [this](auto& made, float top, const char* name) {
        AddText({22, top + 3}, name, Alignment::Left, 7.5f);
        made.SetSize({86, 18});
    };
    auto& whole = AddStyled<gui::IntValueButton>({210, 258}, parts.styles.Button(ButtonLook::UpDown));
    field(whole, 258, "Whole number, up and down");
    whole.MaxValue.assign(16);
    whole.MinValue.assign(1);
    whole.Value.assign(8);
    auto& level = AddStyled<gui::FloatValueButton>({210, 286}, parts.styles.Button(ButtonLook::UpDown));
    field(level, 286, "Decibels, up and down");
    level.MaxValue.assign(120);
    level.MinValue.assign(-240);
    level.Value.assign(-63);
    level.SetFormat([](int value) { return Tenths(value) + " dB"; });
    auto& percent = AddStyled<gui::FloatValueButton>({210, 314}, parts.styles.Button(ButtonLook::Generic));
    field(percent, 314, "Percent, along x");
    percent.MaxValue.assign(1000);
    percent.Orientation.assign(gui::Orientation::Horizontal);
    percent.Value.assign(500);
    percent.SetFormat([](int value) { return Tenths(value) + " %"; });
    auto& off = AddStyled<gui::FloatValueButton>({210, 342}, parts.styles.Button(ButtonLook::Generic));
    field(off, 342, "Disabled");
    off.SetFormat([](int) { return std::string("1.9 kHz"); });
    off.Enabled.assign(false);
    AddText({22, 374}, "Wheel and drag; slow drags are fine ones.", Alignment::Left, 7.0f);
    AddText({22, 388}, "Ctrl: default.   Shift: fine.   Alt: linked ones too.", Alignment::Left, 7.0f);
}

void ValuesPage::AddLevels()
{
    AddCard({320, 230, 616, 444}, "Levels");
    const auto level = [&styles = parts.styles](int value) {
        return [&styles, value](gui::UserInterface& ui, gui::Control* parent, gui::Animator* animator) {
            auto made = std::make_unique<gui::LevelButton>(ui, parent, animator,
                                                           &styles.Button(ButtonLook::SlotLevel));
            made->SetPictures(&styles.Picture("ButtonSlotLevelOff"), nullptr);
            made->SetSize({150, 18});
            made->MaxValue.assign(1000);
            made->Value.assign(value);
            made->Orientation.assign(gui::Orientation::Horizontal);
            made->SetFormat([](int shown) { return Tenths(shown) + " %"; });
            return made;
        };
    };
    const int values[] = {0, 60, 500, 1000};
    const char* const names[] = {"At 0", "At 6 %", "Mouse over", "Full, pressed"};
    const Hand hands[] = {Hand::Away, Hand::Away, Hand::Over, Hand::Pressing};
    for (int i = 0; i < 4; ++i) {
        const float top = 258.0f + 28.0f * static_cast<float>(i);
        AddText({330, top + 3}, names[i], Alignment::Left, 7.5f);
        AddPose({454, top},
                [make = level(values[i])](auto& ui, auto* parent) { return make(ui, parent, nullptr); },
                hands[i], {75, 9});
    }
    AddText({330, 373}, "Live", Alignment::Left, 7.5f);
    auto& live = AddStyled<gui::LevelButton>({454, 370}, parts.styles.Button(ButtonLook::SlotLevel));
    live.SetPictures(&parts.styles.Picture("ButtonSlotLevelOff"), nullptr);
    live.SetSize({150, 18});
    live.MaxValue.assign(1000);
    live.Value.assign(720);
    live.Orientation.assign(gui::Orientation::Horizontal);
    live.SetFormat([](int shown) { return Tenths(shown) + " %"; });
}

void ValuesPage::AddSelects()
{
    AddCard({628, 230, 914, 350}, "Selections, live", gui::Palette::display);
    const char* const names[] = {"Menu", "Drag or wheel only", "Disabled"};
    for (int i = 0; i < 3; ++i) {
        const float top = 258.0f + 28.0f * static_cast<float>(i);
        AddText({638, top + 3}, names[i], Alignment::Left, 7.5f);
        auto& select = AddStyled<gui::SelectButton>(
            {800, top}, parts.styles.Button(i == 1 ? ButtonLook::UpDown : ButtonLook::MenuDark));
        select.SetSize({104, 18});
        for (const char* entry : {"Free", "1/16", "1/8", "1/4", "1/2", "1 bar", "2 bars"})
            select.AddEntry(entry);
        select.OpensMenu.assign(i != 1);
        select.EntryOf(5)->Enabled.assign(false);
        select.Value.assign(3);
        select.Enabled.assign(i != 2);
    }
}

void ValuesPage::AddLights()
{
    AddCard({628, 362, 914, 444}, "Lights and dots");
    const char* const names[] = {
        "LightOff",         "LightOn",     "CurveDot",   "DragDot",          "XYDot",
        "EGDotNormal",      "EGDotActive", "DisplayMid", "DisplayMidActive", "DisplayPeak",
        "DisplayPeakActive"};
    for (int i = 0; i < 11; ++i) {
        const gui::Bitmap& picture = parts.styles.Picture(names[i]);
        const Point whole = picture.GetLogicalSize();
        const Point middle{650.0f + 25.0f * static_cast<float>(i), 408};
        AddPainting(
            gui::Rect::At({std::floor(middle.x - whole.x * 0.5f), std::floor(middle.y - whole.y * 0.5f)},
                          whole),
            [&picture](gui::Canvas& canvas, const gui::Rect&) { canvas.DrawBitmapAt(picture, {}); });
    }
}

}  // namespace

std::unique_ptr<GalleryPage> MakeValuesPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<ValuesPage>(parts, parent);
}

}  // namespace gallery
