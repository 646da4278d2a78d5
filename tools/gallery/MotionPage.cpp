#include "gallery/GalleryPage.h"

#include "gui/ControlBar.h"
#include "gui/FadeAnimation.h"
#include "gui/Light.h"
#include "gui/Timer.h"
#include "gui/ValueAnimation.h"

#include <array>

namespace gallery {

namespace {

using gui::Alignment;
using gui::AnimationMotion;
using gui::Canvas;
using gui::Point;
using gui::Rect;

constexpr int runMs = 1000;
constexpr std::array<const char*, 4> motionNames{"Linear", "Smooth", "Accelerate", "Decelerate"};

class MotionPage : public GalleryPage {
public:
    MotionPage(const PageParts& pageParts, gui::Control* parent) : GalleryPage(pageParts, parent)
    {
        for (int i = 0; i < 4; ++i)
            AddCurve(i);
        AddRuns();
        AddFades();
        Run();
    }
    ~MotionPage() override { parts.animator.Cancel(this); }

    int StillDelayMs() const override { return 600; }

private:
    void AddCurve(int motion);
    void AddRuns();
    void AddFades();
    void Run();

    std::array<gui::Control*, 4> dots{};
    gui::Control* faded = nullptr;
    bool atRight = false;
};

void MotionPage::AddCurve(int motion)
{
    const float left = 12.0f + 228.0f * static_cast<float>(motion);
    AddCard({left, 12, left + 218, 196}, motionNames[static_cast<std::size_t>(motion)]);
    AddPainting({left + 10, 34, left + 208, 186}, [motion](Canvas& canvas, const Rect& area) {
        canvas.FillRect(area, gui::Palette::face);
        for (int i = 1; i < 4; ++i) {
            const float x = area.right * static_cast<float>(i) / 4.0f,
                        y = area.bottom * static_cast<float>(i) / 4.0f;
            canvas.DrawLine({x, 0}, {x, area.bottom}, area, gui::Palette::shade, 1.0f);
            canvas.DrawLine({0, y}, {area.right, y}, area, gui::Palette::shade, 1.0f);
        }
        const Rect inner = area.Inset(6.0f);
        class Graph : public gui::ICurve {
        public:
            Graph(AnimationMotion graphMotion, Rect graphArea) : shape(graphMotion), within(graphArea) {}
            float ValueAt(float x) const override
            {
                const float t = std::clamp((x - within.left) / within.Width(), 0.0f, 1.0f);
                return within.bottom - within.Height() * gui::ApplyMotion(shape, t);
            }

        private:
            AnimationMotion shape;
            Rect within;
        } const graph(static_cast<AnimationMotion>(motion), inner);
        gui::CurveStyle style;
        style.lineColor = gui::Palette::xlfo;
        style.layers.push_back(
            {&graph, area.bottom, gui::Palette::xlfo.WithAlpha(70), gui::Palette::xlfo.WithAlpha(20)});
        canvas.DrawCurves(style, area, area, {}, 0, 255);
    });
}

void MotionPage::AddRuns()
{
    AddCard({12, 208, 684, 366}, "A second along each");
    for (int i = 0; i < 4; ++i) {
        const float y = 244.0f + 28.0f * static_cast<float>(i);
        AddText({22, y - 6}, motionNames[static_cast<std::size_t>(i)], Alignment::Left, 8.0f,
                gui::Palette::ink);
        AddPainting({100, y - 1, 672, y + 1},
                    [](Canvas& canvas, const Rect& area) { canvas.FillRect(area, gui::Palette::shade); });
        const gui::Bitmap& picture = parts.styles.Picture("DisplayPeakActive");
        dots[static_cast<std::size_t>(i)] =
            &AddPainting(Rect::At({100, y - 9}, picture.GetLogicalSize()),
                         [&picture](Canvas& canvas, const Rect&) { canvas.DrawBitmapAt(picture, {}); });
    }
    AddButton({592, 340, 674, 358}, ButtonLook::Generic, "Run", [this] { Run(); });
}

void MotionPage::Run()
{
    const float start = atRight ? 654.0f : 100.0f, end = atRight ? 100.0f : 654.0f;
    atRight = !atRight;
    for (int i = 0; i < 4; ++i) {
        gui::Control* const dot = dots[static_cast<std::size_t>(i)];
        auto& run = parts.animator.Start<gui::ValueAnimation<float>>(this, gui::AnimationKey(dot), dot->Left,
                                                                     start, end);
        run.Motion.assign(static_cast<AnimationMotion>(i));
        run.Duration.assign(runMs);
    }
}

void MotionPage::AddFades()
{
    AddCard({696, 208, 914, 366}, "Fades and flashes");
    faded = &AddPainting({706, 236, 794, 324}, [this](Canvas& canvas, const Rect& area) {
        const gui::Bitmap& face = parts.styles.Picture("ButtonXYNormal");
        canvas.DrawBitmapStretched(face, area, Rect::At({}, face.GetLogicalSize()), 0.0f);
        const gui::Bitmap& dot = parts.styles.Picture("XYDot");
        canvas.DrawBitmapAt(dot, {33, 33});
    });
    AddButton({706, 340, 794, 358}, ButtonLook::Generic, "Fade", [this] {
        const int end = faded->Opacity.value() > 127 ? 0 : 255;
        parts.animator.Start<gui::FadeAnimation>(this, gui::AnimationKey(faded), *faded, end)
            .Duration.assign(600);
    });
    auto& light = Add<gui::Light>(parts.ui, this, gui::Light::Style::Load(parts.ui));
    light.SetPosition({854, 275});
    light.GetTimer().Interval.assign(300);
    AddButton({816, 340, 904, 358}, ButtonLook::Generic, "Flash", [&light] { light.Value.assign(true); });

    AddCard({12, 378, 914, 444}, "Rollovers: 0.1 s in, 0.3 s out; move along", gui::Palette::display);
    for (int i = 0; i < 15; ++i)
        AddStyled<gui::Knob>({22.0f + 59.0f * static_cast<float>(i), 396},
                             parts.styles.Knob(KnobLook::Normal))
            .Value.assign(292 * i);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeMotionPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<MotionPage>(parts, parent);
}

}  // namespace gallery
