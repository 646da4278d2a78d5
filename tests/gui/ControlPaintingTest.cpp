#include "gui/Canvas.h"
#include "support/GuiFixture.h"
#include "support/RecordingCanvas.h"

namespace gui {

namespace {

constexpr Color grey = Color::Rgb(0xC0C0C0), red = Color::Rgb(0xFF0000), green = Color::Rgb(0x00FF00),
                blue = Color::Rgb(0x0000FF);

}  // namespace

class ControlPainting : public GuiFixture {
protected:
    std::vector<RecordingCanvas::Fill> paint(const Rect& dirty)
    {
        ui->Paint();
        root().Invalidate(dirty);
        RecordingCanvas target;
        Canvas canvas(target);
        EXPECT_TRUE(root().PaintDirty(canvas));
        return target.fills;
    }
    std::unique_ptr<ProbeControl> make(Control& parent, const Rect& rect, Color color, bool opaque = false)
    {
        auto made = std::make_unique<ProbeControl>(*ui, &parent, rect, log);
        made->BackgroundColor.assign(color);
        made->Opaque.assign(opaque);
        return made;
    }
    using Fills = std::vector<RecordingCanvas::Fill>;
};

TEST_F(ControlPainting, TheTreeIsPaintedFromTheBottomUpWithinTheDirtyRectangle)
{
    const auto panel = make(root(), {10, 10, 60, 60}, red);
    const auto child = make(*panel, {40, 40, 80, 80}, green);
    const auto beside = make(root(), {60, 10, 90, 60}, blue);
    const auto hidden = make(root(), {0, 0, 90, 90}, blue);
    hidden->Visible.assign(false);
    EXPECT_EQ(paint({0, 0, 200, 100}), (Fills{{{0, 0, 200, 100}, grey},
                                              {{10, 10, 60, 60}, red},
                                              {{50, 50, 60, 60}, green},
                                              {{60, 10, 90, 60}, blue}}));
    EXPECT_EQ(paint({20, 20, 55, 55}),
              (Fills{{{20, 20, 55, 55}, grey}, {{20, 20, 55, 55}, red}, {{50, 50, 55, 55}, green}}));
    EXPECT_FALSE(ui->Paint());
}

TEST_F(ControlPainting, OpacitiesMultiplyDownTheTree)
{
    const auto panel = make(root(), {0, 0, 50, 50}, red);
    const auto child = make(*panel, {0, 0, 10, 10}, green);
    const auto after = make(root(), {50, 0, 60, 50}, blue);
    panel->Opacity.assign(200);
    child->Opacity.assign(128);
    // 200 x 128 / 255 = 100.4, cut.
    EXPECT_EQ(paint({0, 0, 100, 50}), (Fills{{{0, 0, 100, 50}, grey},
                                             {{0, 0, 50, 50}, red.WithAlpha(200)},
                                             {{0, 0, 10, 10}, green.WithAlpha(100)},
                                             {{50, 0, 60, 50}, blue}}));
}

TEST_F(ControlPainting, WhatOpaqueChildrenCoverIsNotPaintedBelow)
{
    struct Row {
        const char* what;
        Rect child, dirty;
        Fills below;  // of the root
    };
    for (const Row& row :
         {Row{"all", {0, 0, 200, 100}, {20, 20, 40, 40}, {}},
          Row{"the top", {0, 0, 200, 30}, {20, 20, 40, 40}, {{{20, 30, 40, 40}, grey}}},
          Row{"the bottom", {0, 30, 200, 100}, {20, 20, 40, 40}, {{{20, 20, 40, 30}, grey}}},
          Row{"the left", {0, 0, 25, 100}, {20, 20, 40, 40}, {{{25, 20, 40, 40}, grey}}},
          Row{"the right", {25, 0, 200, 100}, {20, 20, 40, 40}, {{{20, 20, 25, 40}, grey}}},
          Row{"a corner", {0, 0, 30, 30}, {20, 20, 40, 40}, {{{20, 20, 40, 40}, grey}}},
          Row{"the middle", {0, 25, 200, 30}, {20, 20, 40, 40}, {{{20, 20, 40, 40}, grey}}}}) {
        const auto child = make(root(), row.child, red, true);
        Fills fills = paint(row.dirty);
        ASSERT_FALSE(fills.empty());
        EXPECT_EQ(fills.back(), (RecordingCanvas::Fill{row.child.Intersected(row.dirty), red})) << row.what;
        fills.pop_back();
        EXPECT_EQ(fills, row.below) << row.what;
        root().Opacity.assign(254);  // nothing is spared where the colours mix
        EXPECT_EQ(paint(row.dirty).size(), 2u) << row.what;
        root().Opacity.assign(255);
    }
}

TEST_F(ControlPainting, TheRootShowsItsPictureOrGrey)
{
    root().Invalidate();
    ui->Paint();
    EXPECT_EQ(ui->Picture().GetPixel({10, 10}), grey);
    auto background = std::make_unique<Bitmap>(ui->Backing());
    Bitmap& picture = *background;
    ui->SetBackgroundBitmap(std::move(background));
    ui->Paint();
    EXPECT_EQ(ui->Picture().GetPixel({10, 10}), grey);  // it is empty
    picture.SetSize(200, 100);
    picture.FillRect({0, 0, 200, 100}, blue);
    root().Invalidate();
    ui->Paint();
    EXPECT_EQ(ui->Picture().GetPixel({10, 10}), blue);
}

}  // namespace gui
