#include "gui/Gradient.h"
#include "support/GoldenPicture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace gui {

namespace {

struct Resonance : ICurve {
    float ValueAt(float x) const override
    {
        const float distance = (x - 60) / 4;
        return 50 - 45 / (1 + distance * distance) + 4 * std::sin(x * 0.4f);
    }
};

}  // namespace

TEST(Pictures, CurvesAndGradientsLookAsTheyDid)
{
    DeviceBacking backing;
    for (const int level : {0, 4}) {
        backing.SetLevel(level);
        Bitmap page(backing);
        page.SetSize(120, 80);
        Canvas& canvas = page.GetCanvas();
        Gradient ground(gui::Color::Rgb(0x303840), gui::Color::Rgb(0x101010));
        ground.AddStop(gui::Color::Rgb(0x584830), 0.7f);
        canvas.FillGradient(ground, {0, 0, 120, 80}, Direction::Down, 0, 80, 255);
        const Resonance curve;
        CurveStyle style;
        style.lineColor = gui::Color::Rgb(0xFFB040);
        style.layers.push_back({&curve, 60, {255, 176, 64, 120}, {255, 176, 64, 10}});
        canvas.DrawCurves(style, {4, 4, 116, 64}, {4, 4, 116, 64}, {}, 0, 255);
        for (int i = 0; i < 8; ++i)
            canvas.DrawLine({20, 20}, {20 + 14 * std::cos(i * 0.8f), 20 + 14 * std::sin(i * 0.8f)},
                            {0, 0, 120, 80}, gui::Color::White(), 1);
        canvas.StrokeRect({4, 68, 116, 76}, gui::Color{255, 255, 255, 100}, 1);
        EXPECT_EQ(differenceFromPicture(page, SORDELIN_PICTURES, "Curves" + std::to_string(level)), "");
    }
}

}  // namespace gui
