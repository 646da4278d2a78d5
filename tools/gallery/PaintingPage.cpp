#include "gallery/GalleryPage.h"

#include "gui/Gradient.h"

#include <array>
#include <cmath>
#include <numbers>

namespace gallery {

namespace {

using gui::Alignment;
using gui::Canvas;
using gui::Color;
using gui::Point;
using gui::Rect;

constexpr float pi = std::numbers::pi_v<float>;

/// A low-pass response: flat, a peak, and a fall.
class Response : public gui::ICurve {
public:
    explicit Response(float peakAt) : peak(peakAt) {}
    float ValueAt(float x) const override
    {
        const float d = (x - peak) / 9.0f;
        const float fall = x > peak ? (x - peak) * 0.6f : 0.0f;
        return 62.0f + fall - 42.0f / (1.0f + d * d);
    }

private:
    float peak;
};

/// As harsh as curves come: waves and a step.
class Waves : public gui::ICurve {
public:
    float ValueAt(float x) const override
    {
        return x > 95.0f ? 20.0f + 70.0f * std::fmod(x, 25.0f) / 25.0f
                         : 55.0f - 36.0f * std::sin(x * x * 0.0022f);
    }
};

/// Light that comes and goes along x, in device columns of a given number per unit.
class Pulses : public gui::ICurve {
public:
    explicit Pulses(float columnsPerUnit) : scale(columnsPerUnit) {}
    float ValueAt(float column) const override { return 0.5f + 0.5f * std::sin(column / scale * 0.09f); }

private:
    float scale;
};

class PaintingPage : public GalleryPage {
public:
    PaintingPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        AddGradients();
        AddLines();
        AddCurves();
        AddPictures();
        AddAlpha();
    }

private:
    void AddGradients();
    void AddLines();
    void AddCurves();
    void AddPictures();
    void AddAlpha();
};

void PaintingPage::AddGradients()
{
    AddCard({12, 12, 308, 156}, "Gradients");
    const char* const names[] = {"Left", "Right", "Up", "Down"};
    for (int i = 0; i < 4; ++i) {
        const float left = 22.0f + 70.0f * static_cast<float>(i);
        const auto direction = static_cast<gui::Direction>(i);
        AddPainting({left, 34, left + 62, 82}, [direction](Canvas& canvas, const Rect& area) {
            const gui::Gradient gradient(gui::Palette::ink, gui::Palette::glow);
            const float length = gui::IsHorizontal(direction) ? area.right : area.bottom;
            const bool back = direction == gui::Direction::Left || direction == gui::Direction::Up;
            canvas.FillGradient(gradient, area, direction, back ? length : 0.0f, back ? 0.0f : length, 255);
        });
        AddText({left + 31, 84}, names[i], Alignment::Centre, 7.0f);
    }
    AddPainting({22, 104, 294, 124}, [](Canvas& canvas, const Rect& area) {
        const Color kinds[] = {gui::Palette::xlfo,   gui::Palette::eg, gui::Palette::xy,
                               gui::Palette::accent, gui::Palette::ef, gui::Palette::midi};
        for (int i = 0; i < 5; ++i) {
            const gui::Gradient part(kinds[i], kinds[i + 1]);
            const float left = area.right * static_cast<float>(i) / 5.0f;
            const float right = area.right * static_cast<float>(i + 1) / 5.0f;
            canvas.FillGradient(part, {left, 0, right, area.bottom}, gui::Direction::Right, left, right, 255);
        }
    });
    AddPainting({22, 130, 294, 148}, [](Canvas& canvas, const Rect& area) {
        for (float x = 0; x < area.right; x += 16.0f)
            canvas.FillRect({x, 0, x + 8, area.bottom}, gui::Palette::edge);
        const gui::Gradient clear(gui::Palette::ink.WithAlpha(0), gui::Palette::ink);
        canvas.FillGradient(clear, area, gui::Direction::Right, 0.0f, area.right, 255);
    });
}

void PaintingPage::AddLines()
{
    AddCard({320, 12, 616, 300}, "Lines of 0.5, 1, 1.5, 2, 3 and 5 units", gui::Palette::face);
    AddPainting({328, 34, 608, 294}, [](Canvas& canvas, const Rect& area) {
        const float widths[] = {0.5f, 1.0f, 1.5f, 2.0f, 3.0f, 5.0f};
        for (int i = 0; i < 6; ++i) {
            const Point middle{46.0f + 94.0f * static_cast<float>(i % 3),
                               46.0f + 92.0f * static_cast<float>(i / 3)};
            for (int spoke = 0; spoke < 24; ++spoke) {
                const float angle = pi * static_cast<float>(spoke) / 12.0f;
                const Point along{std::sin(angle), -std::cos(angle)};
                canvas.DrawLine(middle + along * 12.0f, middle + along * 42.0f, area, gui::Palette::ink,
                                widths[i]);
            }
        }
        for (int i = 0; i < 6; ++i) {
            const float left = 4.0f + 46.0f * static_cast<float>(i);
            canvas.DrawLine({left, 194}, {left + 40, 194}, area, gui::Palette::accent, widths[i]);
            canvas.DrawLine({left + 6, 202}, {left + 6, 252}, area, gui::Palette::accent, widths[i]);
            canvas.DrawLine({left + 12, 204}, {left + 40, 208}, area, gui::Palette::accent, widths[i]);
            canvas.DrawLine({left + 14, 212}, {left + 40, 252}, area, gui::Palette::accent, widths[i]);
        }
    });
}

void PaintingPage::AddCurves()
{
    AddCard({628, 12, 914, 300}, "Curves and bands", gui::Palette::face);
    AddPainting({638, 34, 770, 134}, [](Canvas& canvas, const Rect& area) {
        canvas.FillRect(area, gui::Palette::shade);
        const Response first(50.0f), second(88.0f);
        gui::CurveStyle style;
        style.lineColor = gui::Palette::ink;
        style.layers.push_back(
            {&first, 100.0f, gui::Palette::ink.WithAlpha(120), gui::Palette::ink.WithAlpha(30)});
        canvas.DrawCurves(style, area, area, {}, 0, 255);
        style.lineColor = gui::Palette::accent;
        style.layers.front() = {&second, 100.0f, gui::Palette::accent.WithAlpha(110),
                                gui::Palette::accent.WithAlpha(0)};
        canvas.DrawCurves(style, area, area, {}, 0, 255);
    });
    AddPainting({778, 34, 904, 134}, [](Canvas& canvas, const Rect& area) {
        canvas.FillRect(area, gui::Palette::bar);
        const Waves waves;
        gui::CurveStyle style;
        style.lineColor = gui::Palette::midiLit;
        style.lineWidth = 1.5f;
        style.layers.push_back(
            {&waves, 55.0f, gui::Palette::midiLit.WithAlpha(90), gui::Palette::midiLit.WithAlpha(20)});
        canvas.DrawCurves(style, area, area, {}, 0, 255);
    });
    const char* const names[] = {"Middle, from 0", "Middle, from 0.3", "Columns"};
    for (int i = 0; i < 3; ++i) {
        const float top = 154.0f + 48.0f * static_cast<float>(i);
        AddText({638, top - 14}, names[i], Alignment::Left, 7.0f);
        AddPainting({638, top, 904, top + 30}, [this, i](Canvas& canvas, const Rect& area) {
            canvas.FillRect(area, gui::Palette::bar);
            const Pulses pulses(parts.ui.Backing().Scale());
            const auto mode = i == 2 ? gui::BandMode::Columns : gui::BandMode::Middle;
            canvas.DrawCurveBand(mode, pulses, area, area, {}, gui::Palette::glow, gui::Palette::midiLit,
                                 i == 1 ? 0.3f : 0.0f);
        });
    }
}

void PaintingPage::AddPictures()
{
    AddCard({12, 168, 308, 444}, "Pictures");
    AddText({22, 190}, "Stretched along x, to 18 ... 120 units", Alignment::Left, 7.0f);
    float left = 22;
    for (const float width : {18.0f, 27.0f, 54.0f, 120.0f}) {
        AddPainting({left, 206, left + width, 224}, [this](Canvas& canvas, const Rect& area) {
            const gui::Bitmap& face = parts.styles.Picture("ButtonGenericNormal");
            canvas.DrawBitmapStretched(face, area, Rect::At({}, face.GetLogicalSize()), 0.0f);
        });
        left += width + 10;
    }
    AddText({22, 234}, "Both ways, and in halves", Alignment::Left, 7.0f);
    const Rect stretched[] = {
        {22, 250, 58, 280}, {68, 250, 168, 320}, {178, 250, 294, 284}, {178, 292, 294, 320}};
    for (int i = 0; i < 4; ++i)
        AddPainting(stretched[i], [this, i](Canvas& canvas, const Rect& area) {
            const char* const names[] = {"ButtonXYNormal", "ButtonXYNormal",
                                         "ParameterValueDisplayBackground", "ButtonDryNormal"};
            const gui::Bitmap& face = parts.styles.Picture(names[i]);
            const Rect source = Rect::At({}, face.GetLogicalSize());
            if (i == 3)
                canvas.DrawBitmapStretchedHalves(face, Rect::At({}, {area.right, 18}), source, 255,
                                                 gui::Orientation::Horizontal);
            else
                canvas.DrawBitmapStretched(face, area, source, 0.0f);
        });
    AddText({22, 332}, "Faded, and through a mask", Alignment::Left, 7.0f);
    for (int i = 0; i < 4; ++i) {
        const float x = 22.0f + 44.0f * static_cast<float>(i);
        AddPainting({x, 346, x + 48, 394}, [this, i](Canvas& canvas, const Rect&) {
            canvas.DrawBitmapAt(parts.styles.Picture("KnobNormalBackNormal"), {}, 255 - 64 * i);
        });
    }
    AddPainting({214, 346, 288, 420}, [this](Canvas& canvas, const Rect& area) {
        gui::Bitmap stripes(parts.ui.Backing());
        stripes.SetSize(area.right, area.bottom);
        const gui::Gradient gradient(gui::Palette::xlfo, gui::Palette::xy);
        stripes.FillGradient(gradient, area, gui::Direction::Down, 0.0f, area.bottom, 255);
        canvas.DrawMaskedBitmap(stripes, area, {}, parts.styles.Picture("ButtonComponentPreviewOverlayMask"),
                                {}, 255);
    });
    AddText({22, 402}, "255, 191, 127 and 63", Alignment::Left, 7.0f);
}

void PaintingPage::AddAlpha()
{
    AddCard({320, 312, 914, 444}, "Rectangles and alpha");
    AddPainting({330, 334, 606, 436}, [](Canvas& canvas, const Rect& area) {
        for (int i = 0; i < 9; ++i) {
            const float x = 30.0f * static_cast<float>(i);
            canvas.FillRect({x, 0, x + 26, 40},
                            gui::Palette::ink.WithAlpha(static_cast<std::uint8_t>(255 * (i + 1) / 9)));
            canvas.FillRect({x, 30, x + 26, 60},
                            gui::Palette::accent.WithAlpha(static_cast<std::uint8_t>(255 * (i + 1) / 9)));
        }
        for (int i = 0; i < 4; ++i) {
            const float x = 4.0f + 70.0f * static_cast<float>(i);
            canvas.StrokeRect({x, 72, x + 58, 96}, gui::Palette::ink, 0.5f * static_cast<float>(i + 1));
        }
        static_cast<void>(area);
    });
    AddPainting({622, 334, 904, 436}, [](Canvas& canvas, const Rect&) {
        // Neighbours that touch must leave no gap and no seam at any scale.
        for (int row = 0; row < 10; ++row)
            for (int column = 0; column < 28; ++column) {
                const float x = 10.0f * static_cast<float>(column), y = 10.0f * static_cast<float>(row);
                const Color color = (row + column) % 2 ? gui::Palette::ink : gui::Palette::edge;
                canvas.FillRect({x, y, x + 10, y + 10},
                                column < 14 ? color : gui::Palette::ink.WithAlpha(128));
            }
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakePaintingPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<PaintingPage>(parts, parent);
}

}  // namespace gallery
