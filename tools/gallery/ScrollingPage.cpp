#include "gallery/GalleryPage.h"

#include "gui/ControlBar.h"
#include "gui/FadeOverlay.h"
#include "gui/ScrollArea.h"
#include "gui/ScrollStrip.h"
#include "gui/ToggleButton.h"

#include <cmath>

namespace gallery {

namespace {

using gui::Alignment;
using gui::Canvas;
using gui::Color;
using gui::Point;
using gui::Rect;

/// A field of numbered tiles.
class Tiles : public gui::Control {
public:
    Tiles(gui::UserInterface& ui, gui::Control* parent, int tileColumns, int tileRows)
        : Control(ui, parent), number(ui.Platform().CreateText()), columns(tileColumns)
    {
        HitThreshold.assign(255);  // the hand goes through
        number->Size.assign(9.0f);
        number->Color.assign(gui::Palette::ink);
        SetSize({tile * static_cast<float>(columns), tile * static_cast<float>(tileRows)});
    }
    int GetAlphaAt(Point) const override { return 0; }
    void PaintContent(Canvas& canvas) override
    {
        const Color grounds[] = {gui::Palette::face, gui::Palette::panel, gui::Palette::shade};
        const Rect clip = canvas.Clip.value();
        const auto first = [](float edge) { return static_cast<int>(std::floor(edge / tile)); };
        for (int y = first(clip.top); tile * static_cast<float>(y) < clip.bottom; ++y)
            for (int x = first(clip.left); tile * static_cast<float>(x) < clip.right; ++x) {
                const Point at{tile * static_cast<float>(x), tile * static_cast<float>(y)};
                canvas.FillRect(Rect::At(at, {tile, tile}), grounds[(x + 2 * y) % 3]);
                number->String.assign(std::to_string(y * columns + x + 1));
                canvas.DrawBitmapAt(number->GetBitmap(), at + Point{6, 5});
            }
    }

private:
    static constexpr float tile = 48.0f;
    std::unique_ptr<gui::Text> number;
    int columns;
};

class ScrollingPage : public GalleryPage {
public:
    ScrollingPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddArea({22, 36, 342, 256}, true);
        AddArea({374, 36, 554, 256}, false);
        AddStrip();
        AddBar();
    }

private:
    void AddArea(const Rect& bounds, bool bars);
    void AddStrip();
    void AddBar();
};

void ScrollingPage::AddArea(const Rect& bounds, bool bars)
{
    AddCard({bounds.left - 10, bounds.top - 24, bounds.right + 10, bounds.bottom + 10},
            bars ? "An area with bars: drag, throw, wheel" : "Fades instead");
    auto& area = Add<gui::ScrollArea>(parts.ui, this, &parts.animator);
    area.SetBounds(bounds);
    area.HorizontalBar.assign(bars);
    area.VerticalBar.assign(bars);
    auto& tiles = Add<Tiles>(parts.ui, &area.Content(), 20, 20);
    area.ContentWidth.assign(tiles.GetWidth());
    area.ContentHeight.assign(tiles.GetHeight());
    area.ScrollX.assign(200.0f);
    area.ScrollY.assign(120.0f);
    if (bars)
        return;
    auto& fades = Add<gui::FadeOverlay>(parts.ui, this, &parts.animator);
    fades.SetBounds(bounds);
    fades.Color.assign(gui::Palette::panel);
    fades.FadeSize.assign(24.0f);
    fades.HitThreshold.assign(255);
    const auto update = [&area, &fades](void*) {
        using Edge = gui::FadeOverlay::Edge;
        const Point range = area.ScrollRange();
        fades.SetShown(Edge::Left, area.ScrollX.value() > 0.0f);
        fades.SetShown(Edge::Top, area.ScrollY.value() > 0.0f);
        fades.SetShown(Edge::Right, area.ScrollX.value() < range.x);
        fades.SetShown(Edge::Bottom, area.ScrollY.value() < range.y);
    };
    area.OnScrolled.addHandler(NotifyEvent::handler(update));
    update(nullptr);
}

void ScrollingPage::AddStrip()
{
    AddCard({576, 12, 914, 266}, "A strip with buttons at its ends", gui::Palette::display);
    auto& strip =
        Add<gui::ScrollStrip>(parts.ui, this, &parts.animator, &parts.styles.Button(ButtonLook::ScrollLeft),
                              &parts.styles.Button(ButtonLook::ScrollRight));
    strip.SetBounds(586, 42, 318, 90);
    for (int i = 0; i < 10; ++i) {
        auto& item = Add<gui::Button>(parts.ui, &strip.Content(), &parts.animator,
                                      &parts.styles.Button(ButtonLook::Component));
        item.SetPosition({82.0f * static_cast<float>(i) + 4.0f, 8});
        item.SetText(std::to_string(i + 1));
    }
    strip.Area().ContentWidth.assign(824.0f);
    strip.ScrollTo(120.0f);

    AddText({586, 142}, "The same at its left end, and with nothing to scroll", Alignment::Left, 7.5f);
    for (int k = 0; k < 2; ++k) {
        auto& still = Add<gui::ScrollStrip>(parts.ui, this, &parts.animator,
                                            &parts.styles.Button(ButtonLook::ScrollLeft),
                                            &parts.styles.Button(ButtonLook::ScrollRight));
        still.SetBounds(586, 160 + 52.0f * static_cast<float>(k), 318, 44);
        const int count = k == 0 ? 16 : 5;
        for (int i = 0; i < count; ++i) {
            auto& item = Add<gui::Button>(parts.ui, &still.Content(), &parts.animator,
                                          &parts.styles.Button(ButtonLook::Generic));
            item.SetBounds(60.0f * static_cast<float>(i) + 4.0f, 13, 54, 18);
            item.SetText("Item " + std::to_string(i + 1));
        }
        still.Area().ContentWidth.assign(60.0f * static_cast<float>(count) + 8.0f);
    }
}

void ScrollingPage::AddBar()
{
    AddCard({12, 278, 914, 444}, "A bar whose sections open and close");
    AddPainting({22, 301, 902, 325},
                [](Canvas& canvas, const Rect& area) { canvas.FillRect(area, gui::Palette::bar); });
    auto& bar = Add<gui::ControlBar>(parts.ui, this, &parts.animator);
    bar.SetBounds(22, 330, 0, 104);
    bar.Animated.assign(true);
    bar.BarAnimationFlags.assign(gui::ControlBar::AnimationFlag::size |
                                 gui::ControlBar::AnimationFlag::opacity);
    const char* const names[] = {"Delay", "Filters", "Output", "Modulation"};
    const Color colors[] = {gui::Palette::midi, gui::Palette::xlfo, gui::Palette::eg, gui::Palette::xy};
    for (int i = 0; i < 4; ++i) {
        auto& section = Add<gui::Control>(parts.ui, nullptr);
        section.SetSize({220, 104});
        section.BackgroundColor.assign(colors[i]);
        auto& knob = Add<gui::Knob>(parts.ui, &section, &parts.animator, parts.styles.Knob(KnobLook::Large));
        knob.SetPosition({78, 24});
        auto& name = Add<Caption>(parts.ui, &section, names[i], 8.0f, gui::Palette::white);
        name.Place({10, 6});
        bar.Insert(-1, section);
        auto& toggle = AddStyled<gui::ToggleButton>({30.0f + 92.0f * static_cast<float>(i), 304},
                                                    parts.styles.Button(ButtonLook::Bar));
        toggle.SetSize({84, 18});
        toggle.SetText(names[i]);
        toggle.Toggles.assign(true);
        toggle.Value.assign(1);
        toggle.OnClick.addHandler(NotifyEvent::handler([&bar, &section, &toggle](void*) {
            if (toggle.On.value())
                bar.Expand(section, 220.0f);
            else
                bar.Collapse(section);
        }));
    }
    bar.Relayout();
}

}  // namespace

std::unique_ptr<GalleryPage> MakeScrollingPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<ScrollingPage>(parts, parent);
}

}  // namespace gallery
