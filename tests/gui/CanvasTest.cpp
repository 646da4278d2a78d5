#include "gui/Bitmap.h"
#include "gui/Gradient.h"

#include <gtest/gtest.h>

namespace gui {

namespace {

/// Keeps what it is asked to draw.
struct RecordingTarget : ICanvas {
    struct Copy {
        Rect destination;
        Point source;
        int alpha;
    };
    struct Fill {
        Rect rect;
        gui::Color color;
    };

    void DrawBitmap(const IBitmap&, const Rect& destination, Point source, int alpha) override
    {
        copies.push_back({destination, source, alpha});
    }
    void DrawMaskedBitmap(const IBitmap&, const Rect& destination, Point source, const IBitmap&, Point mask,
                          int alpha) override
    {
        copies.push_back({destination, source, alpha});
        maskSource = mask;
    }
    void DrawCurves(const CurveStyle&, const Rect&, const Rect&, Point, int, int) override {}
    void DrawCurveBand(BandMode, const ICurve&, const Rect&, const Rect&, Point, gui::Color, gui::Color,
                       float) override
    {}
    void FillGradient(const IGradient&, const Rect&, Direction, float start, float end, int) override
    {
        gradientEnds = {start, end};
    }
    void DrawLine(Point, Point, const Rect& clip, gui::Color color, float) override
    {
        fills.push_back({clip, color});
    }
    void FillRect(const Rect& rect, gui::Color color) override { fills.push_back({rect, color}); }
    const IDeviceBacking& GetBacking() const override { return backing; }
    gui::Color GetPixel(Point) const override { return {}; }
    void SetPixel(Point point, gui::Color color) override { fills.push_back({Rect::At(point, {}), color}); }

    DeviceBacking backing;
    std::vector<Copy> copies;
    std::vector<Fill> fills;
    Point maskSource;
    Point gradientEnds;
};

struct CanvasTest : testing::Test {
    CanvasTest() { canvas.Clip.assign({0, 0, 100, 100}); }
    RecordingTarget target;
    Canvas canvas{target};
    Bitmap picture{target.backing};
};

void ExpectRect(const Rect& found, const Rect& expected)
{
    EXPECT_TRUE(IsSameRect(found, expected))
        << found.left << ' ' << found.top << ' ' << found.right << ' ' << found.bottom << " isn't "
        << expected.left << ' ' << expected.top << ' ' << expected.right << ' ' << expected.bottom;
}

}  // namespace

TEST_F(CanvasTest, WhatTheClipCutsFromTheTopLeftMovesTheSource)
{
    canvas.Origin.assign({10, 20});
    canvas.Clip.assign({5, 6, 30, 30});
    canvas.Alpha.assign(128);
    canvas.DrawMaskedBitmap(picture, {0, 0, 40, 20}, {2, 3}, picture, {1, 1}, 100);
    ASSERT_EQ(target.copies.size(), 1u);
    ExpectRect(target.copies[0].destination, {15, 26, 40, 40});
    EXPECT_EQ(target.copies[0].source, (Point{7, 9}));
    EXPECT_EQ(target.maskSource, (Point{6, 7}));
    EXPECT_EQ(target.copies[0].alpha, 50);  // 12928 + (12928 >> 8) = 12978, / 256
}

TEST_F(CanvasTest, TheClipStaysWhereItIsWhenTheOriginSnaps)
{
    target.backing.SetLevel(1);
    canvas.Origin.assign({1.3f, 0});  // snaps to 1.6
    canvas.Clip.assign({0, 0, 10, 10});
    canvas.FillRect({-5, 2, 20, 4}, gui::Color::Black());
    ASSERT_EQ(target.fills.size(), 1u);
    ExpectRect(target.fills[0].rect, {1.3f, 2, 11.3f, 4});
    canvas.FillGradient(Gradient(), {0, 0, 5, 5}, Direction::Right, 0, 5, 255);
    EXPECT_NEAR(target.gradientEnds.x, 1.6f, 1e-5f);
    EXPECT_NEAR(target.gradientEnds.y, 6.6f, 1e-5f);
}

TEST_F(CanvasTest, AnEmptyClipLetsNothingThrough)
{
    canvas.Clip.assign({5, 5, 5, 9});
    canvas.DrawBitmap(picture, {0, 0, 40, 20}, {}, 255);
    canvas.DrawMaskedBitmap(picture, {0, 0, 40, 20}, {}, picture, {}, 255);
    canvas.FillRect({0, 0, 40, 20}, gui::Color::Black());
    canvas.DrawLine({0, 0}, {9, 9}, {0, 0, 40, 40}, gui::Color::Black(), 1);
    canvas.SetPixel({5, 6}, gui::Color::Black());
    EXPECT_TRUE(target.copies.empty() && target.fills.empty());
}

TEST_F(CanvasTest, AStrokeLiesJustOutsideWithoutOverlap)
{
    canvas.StrokeRect({10, 10, 20, 30}, gui::Color::Black(), 2);
    ASSERT_EQ(target.fills.size(), 4u);
    ExpectRect(target.fills[0].rect, {8, 8, 22, 10});
    ExpectRect(target.fills[1].rect, {20, 10, 22, 30});
    ExpectRect(target.fills[2].rect, {8, 30, 22, 32});
    ExpectRect(target.fills[3].rect, {8, 10, 10, 30});
}

TEST_F(CanvasTest, StretchingKeepsTheEndsAndTilesTheMiddle)
{
    picture.SetSize(30, 10);
    // A cap is a third of the source, 10; the middle of 10 fits into 15 one and a half times.
    canvas.DrawBitmapStretched(picture, {0, 0, 35, 10}, {0, 0, 30, 10}, 4);
    ASSERT_EQ(target.copies.size(), 4u);
    const Rect destinations[] = {{0, 0, 10, 10}, {10, 0, 20, 10}, {20, 0, 25, 10}, {25, 0, 35, 10}};
    const float sources[] = {0, 10, 10, 20};
    for (std::size_t i = 0; i < 4; ++i) {
        ExpectRect(target.copies[i].destination, destinations[i]);
        EXPECT_FLOAT_EQ(target.copies[i].source.x, sources[i]);
    }
}

TEST_F(CanvasTest, StretchingBothWaysCoversAllOnce)
{
    // Squeezed and widened, at scales where thirds and halves are no whole pixels.
    for (int level = 0; level < DeviceBacking::levelCount; ++level) {
        target.backing.SetLevel(level);
        picture.SetSize(31, 17);
        Bitmap page(target.backing);
        page.SetSize(60, 60);
        picture.GetCanvas().FillRect({0, 0, 31, 17}, gui::Color{255, 255, 255, 128});
        page.GetCanvas().DrawBitmapStretched(picture, {3, 2, 50, 11}, {0, 0, 31, 17}, 5);
        page.GetCanvas().DrawBitmapStretchedHalves(picture, {3, 20, 50, 55}, {0, 0, 31, 17}, 255,
                                                   Orientation::Vertical);
        const int width = page.GetSize().x;
        const float scale = target.backing.Scale();
        for (const Rect& covered : {Rect{3, 2, 50, 11}, Rect{3, 20, 50, 55}}) {
            const DeviceRect device = ToDevice(covered, scale);
            for (int y = device.top; y < device.bottom; ++y)
                for (int x = device.left; x < device.right; ++x)
                    ASSERT_EQ(page.GetPixels()[y * width + x], 0x7F808080u) << level << ' ' << x << ' ' << y;
        }
    }
}

TEST_F(CanvasTest, StretchingToTheSameSizeIsAPlainCopy)
{
    canvas.DrawBitmapStretched(picture, {5, 5, 35.0005f, 15}, {1, 2, 31, 12}, 4, 200);
    ASSERT_EQ(target.copies.size(), 1u);
    ExpectRect(target.copies[0].destination, {5, 5, 35, 15});
    EXPECT_EQ(target.copies[0].source, (Point{1, 2}));
    EXPECT_EQ(target.copies[0].alpha, 200);
}

}  // namespace gui
