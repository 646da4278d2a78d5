#include "gallery/GalleryPage.h"

#include <cmath>

namespace gallery {

namespace {

using gui::Alignment;
using gui::Point;
using Hand = Pose::Hand;

constexpr int shownValue = 2458;  // 0.6 of the range: the pointer stands at 30 degrees

class KnobsPage : public GalleryPage {
public:
    KnobsPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddStyles();
        AddRings();
        AddVariations();
    }

private:
    void AddStyles();
    void AddStyleRow(KnobLook look, const char* name, float middle);
    void AddRings();
    void AddVariations();
    gui::Knob& AddVariation(int place, const char* name);
    Pose::Maker PosedKnob(KnobLook look, bool enabled = true);
};

Pose::Maker KnobsPage::PosedKnob(KnobLook look, bool enabled)
{
    return [&styles = parts.styles, look, enabled](gui::UserInterface& ui, gui::Control* parent) {
        auto knob = std::make_unique<gui::Knob>(ui, parent, nullptr, styles.Knob(look));
        if (look == KnobLook::Ring) {
            knob->Rotation.assign(70.0f);
            knob->RotationOffset.assign(90.0f);
        }
        knob->Value.assign(shownValue);
        knob->Enabled.assign(enabled);
        return knob;
    };
}

constexpr float knobColumns[] = {142.0f, 222.0f, 302.0f, 382.0f, 462.0f, 542.0f};

void KnobsPage::AddStyles()
{
    AddCard({12, 12, 596, 338}, "Knobs", gui::Palette::display);
    const char* const heads[] = {"Live", "Mouse over", "On the pointer", "Dragged", "Turned", "Disabled"};
    for (int i = 0; i < 6; ++i)
        AddText({knobColumns[i], 34}, heads[i], Alignment::Centre, 7.0f);
    AddStyleRow(KnobLook::Normal, "Normal", 80.0f);
    AddStyleRow(KnobLook::Large, "Large", 152.0f);
    AddStyleRow(KnobLook::Outer, "Outer", 228.0f);
    AddStyleRow(KnobLook::Inner, "Inner", 302.0f);
}

void KnobsPage::AddStyleRow(KnobLook look, const char* name, float middle)
{
    const gui::Knob::Style& style = parts.styles.Knob(look);
    const Point whole = style.MainPicture()->GetLogicalSize();
    const bool wide = whole.x > 50.0f;
    const Point onBody = PointAround(whole, 210.0f, whole.x * 0.2f);
    const Point onPointer = PointAround(whole, 30.0f, wide ? 22.0f : 13.0f);
    const auto corner = [&](int column) {
        return Point{knobColumns[column] - whole.x * 0.5f, middle - whole.y * 0.5f};
    };
    AddText({22, middle - 6}, name, Alignment::Left, 8.0f, gui::Palette::ink);
    if (look == KnobLook::Inner) {
        // As the editor has it: with an outer one around.
        AddStyled<gui::Knob>(corner(0) - Point{8, 8}, parts.styles.Knob(KnobLook::Outer)).Value.assign(3200);
        for (int i = 1; i < 6; ++i)
            AddPose(corner(i) - Point{8, 8}, PosedKnob(KnobLook::Outer, i < 5), Hand::Away);
    }
    gui::Knob& live = AddStyled<gui::Knob>(corner(0), style);
    live.DefaultValue.assign(2048);
    live.Value.assign(shownValue);
    AddPose(corner(1), PosedKnob(look), Hand::Over, onBody);
    AddPose(corner(2), PosedKnob(look), Hand::Over, onPointer);
    AddPose(corner(3), PosedKnob(look), Hand::Pressing, onBody);
    AddPose(corner(4), PosedKnob(look), Hand::Pressing, onPointer);
    AddPose(corner(5), PosedKnob(look, false), Hand::Away);
}

void KnobsPage::AddRings()
{
    AddCard({608, 12, 914, 338}, "Ring around a knob", gui::Palette::display);
    struct Place {
        const char* name;
        Hand hand;
    };
    const Place places[] = {{"Live", Hand::Away},
                            {"Mouse over", Hand::Over},
                            {"Turned", Hand::Pressing},
                            {"Disabled", Hand::Away}};
    const Point whole = parts.styles.Knob(KnobLook::Ring).MainPicture()->GetLogicalSize();
    for (int i = 0; i < 4; ++i) {
        const Point at{i % 2 == 0 ? 620.0f : 764.0f, i < 2 ? 56.0f : 204.0f};
        AddText({at.x + 62.0f, at.y - 6.0f}, places[i].name, Alignment::Centre, 7.0f);
        AddPainting(gui::Rect::At(at, whole), [this](gui::Canvas& canvas, const gui::Rect& area) {
            for (int step = 0; step <= 6; ++step) {
                const Point dot =
                    PointAround(area.Size(), 55.0f + 70.0f * static_cast<float>(step) / 6.0f, 52.0f);
                canvas.DrawBitmapAt(parts.styles.Picture("ButtonHotspotNormal"),
                                    {std::round(dot.x) - 4.0f, std::round(dot.y) - 4.0f});
            }
        });
        if (i == 0) {
            gui::Knob& ring = AddStyled<gui::Knob>(at, parts.styles.Knob(KnobLook::Ring));
            ring.Rotation.assign(70.0f);
            ring.RotationOffset.assign(90.0f);
            ring.MaxValue.assign(6);
            ring.Value.assign(4);
            AddStyled<gui::Knob>(at + Point{30, 30}, parts.styles.Knob(KnobLook::Large))
                .Value.assign(shownValue);
        } else {
            AddPose(at, PosedKnob(KnobLook::Ring, i < 3), places[i].hand, PointAround(whole, 97.0f, 50.0f));
            AddPose(at + Point{30, 30}, PosedKnob(KnobLook::Large, i < 3), Hand::Away);
        }
    }
}

gui::Knob& KnobsPage::AddVariation(int place, const char* name)
{
    const float middle = 68.0f + 79.0f * static_cast<float>(place);
    gui::Knob& knob = AddStyled<gui::Knob>({middle - 24.0f, 372.0f}, parts.styles.Knob(KnobLook::Normal));
    AddText({middle, 424}, name, Alignment::Centre, 7.0f);
    knob.DefaultValue.assign(2048);
    knob.Value.assign(3072);
    return knob;
}

void KnobsPage::AddVariations()
{
    AddCard({12, 350, 914, 444}, "Variations, all live");
    gui::Knob& stepped = AddVariation(0, "Four steps");
    stepped.MaxValue.assign(3);
    stepped.Value.assign(2);
    AddVariation(1, "Quarter turn").Rotation.assign(90.0f);
    AddVariation(2, "Half turn").Rotation.assign(180.0f);
    AddVariation(3, "Whole turn").Rotation.assign(360.0f);
    gui::Knob& offset = AddVariation(4, "Half, from below");
    offset.Rotation.assign(180.0f);
    offset.RotationOffset.assign(180.0f);
    gui::Knob& warped = AddVariation(5, "Square law");
    warped.SetWarp([](float x) { return std::sqrt(x); }, [](float x) { return x * x; });
    warped.Transform.assign(gui::ValueControl::TransformBehavior::Warped);
    AddVariation(6, "Fine at 0.01").FineFactor.assign(0.01f);
    AddVariation(7, "Along x").Orientation.assign(gui::Orientation::Horizontal);
    gui::Knob& first = AddVariation(8, "Linked, Alt");
    gui::Knob& second = AddVariation(9, "to this one");
    second.Value.assign(1024);
    first.LinkWith(second);
    AddVariation(10, "Highlighted").Highlighted.assign(true);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeKnobsPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<KnobsPage>(parts, parent);
}

}  // namespace gallery
