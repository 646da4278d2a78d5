#include "gui/Image.h"
#include "gui/ImageLabel.h"
#include "gui/Label.h"
#include "gui/Light.h"
#include "gui/OffscreenInterface.h"
#include "gui/Shape.h"
#include "gui/Timer.h"
#include "support/PlainPlatform.h"

#include <gtest/gtest.h>

namespace gui {

namespace {

/// A text whose letters are blocks of 4 by 10.
class BlockText : public Text {
public:
    using Text::Text;
    const Bitmap& GetBitmap() override
    {
        bitmap.SetSize(GetWidth(), GetHeight());
        bitmap.FillRect({0, 0, GetWidth(), GetHeight()}, Color.value());
        return bitmap;
    }
    float GetHeight() override { return 10; }
    float GetBaselineShift() override { return -1; }
    float GetWidth() override { return 4.0f * static_cast<float>(String.value().size()); }
};

struct BlockPlatform : PlainPlatform {
    explicit BlockPlatform(DeviceBacking& deviceBacking) : backing(deviceBacking) {}
    std::unique_ptr<Text> CreateText() override { return std::make_unique<BlockText>(backing); }
    DeviceBacking& backing;
};

struct PaintedControls : testing::Test {
    gui::Color At(float x, float y)
    {
        ui.Paint();
        return ui.Picture().GetPixel({x, y});
    }
    /// The rectangle of pixels of that colour.
    Rect Found(gui::Color color)
    {
        Rect found;
        for (float y = 0; y < 50; ++y)
            for (float x = 0; x < 100; ++x)
                if (At(x, y) == color)
                    found = found.United(Rect::At({x, y}, {1, 1}));
        return found;
    }

    DeviceBacking textBacking;
    OffscreenInterface ui{std::make_unique<BlockPlatform>(textBacking), {100, 50}};
    RootControl& root = ui.GetRootControl();
    const gui::Color red = gui::Color::Rgb(0xFF0000);
    const gui::Color green = gui::Color::Rgb(0x00FF00);
    const gui::Color blue = gui::Color::Rgb(0x0000FF);
};

}  // namespace

TEST_F(PaintedControls, AShapeFillsWithinItsBorder)
{
    Shape shape(ui, &root, red);
    shape.SetBounds({10, 10, 30, 30});
    shape.BorderColor.assign(blue);
    shape.BorderWidth.assign(2);
    EXPECT_EQ(Found(red), (Rect{12, 12, 28, 28}));
    EXPECT_EQ(Found(blue), (Rect{10, 10, 30, 30}));
    shape.FillColor.assign({});
    EXPECT_TRUE(Found(red).IsEmpty());
}

TEST_F(PaintedControls, AShapesBorderIsEquallyThickAtEveryScale)
{
    Shape shape(ui, &root, red);
    shape.SetBounds({10, 10, 30, 30});
    shape.BorderColor.assign(blue);
    for (int level = 0; level < DeviceBacking::levelCount; ++level) {
        ui.Backing().SetLevel(level);
        for (const float width : {0.5f, 1.0f, 1.5f, 3.0f}) {
            shape.BorderWidth.assign(width);
            ui.Paint();
            const float scale = ui.Backing().Scale();
            const auto isBorder = [&](int x, int y) {
                return ui.Picture().GetPixels()[y * ui.Picture().GetSize().x + x] == ToPixel(blue);
            };
            const int start = ToDevice(10, scale), end = ToDevice(30, scale), middle = ToDevice(20, scale);
            const int thickness = ToDevice(width, scale);
            for (int i = 0; i < end - start; ++i) {
                const bool expected = i < thickness || i >= end - start - thickness;
                EXPECT_EQ(isBorder(start + i, middle), expected) << scale << ' ' << width << ' ' << i;
                EXPECT_EQ(isBorder(middle, start + i), expected) << scale << ' ' << width << ' ' << i;
            }
        }
    }
}

TEST_F(PaintedControls, AShapesGradientRunsInItsDirection)
{
    Shape shape(ui, &root, {});
    shape.SetBounds({0, 0, 40, 40});
    shape.FillGradient.assign(Gradient(gui::Color::Black(), gui::Color::White()));
    struct Row {
        Direction direction;
        Point dark, light;
    };
    for (const auto& [direction, dark, light] :
         {Row{Direction::Left, {39, 20}, {0, 20}}, Row{Direction::Right, {0, 20}, {39, 20}},
          Row{Direction::Up, {20, 39}, {20, 0}}, Row{Direction::Down, {20, 0}, {20, 39}}}) {
        shape.GradientDirection.assign(direction);
        EXPECT_EQ(At(dark.x, dark.y).r, 3) << static_cast<int>(direction);  // half a pixel of 40
        EXPECT_EQ(At(light.x, light.y).r, 252);
    }
    shape.GradientType.assign(Shape::GradientType::Radial);
    EXPECT_LT(At(20, 20).r, 8);
    EXPECT_GT(At(0, 0).r, 247);
    shape.FillGradient.assign(Gradient(red, red));
    EXPECT_EQ(At(20, 20), red);
}

TEST_F(PaintedControls, AnImageCatchesTheMouseWhereItsPixelsShow)
{
    Bitmap picture(ui.Backing());
    picture.SetSize(30, 10);
    picture.FillRect({0, 0, 10, 10}, red);
    picture.FillRect({20, 0, 30, 10}, red);
    Image image(ui, &root, picture);
    EXPECT_EQ(image.GetBounds(), (Rect{0, 0, 30, 10}));
    EXPECT_EQ(image.GetAlphaAt({9, 5}), 255);
    EXPECT_EQ(image.GetAlphaAt({10, 5}), 0);
    image.Offset.assign({15, 0});
    EXPECT_EQ(image.GetAlphaAt({4, 5}), 0);
    EXPECT_EQ(image.GetAlphaAt({5, 5}), 255);

    image.Offset.assign({});
    image.SetBounds({0, 0, 60, 10});
    image.StretchMode.assign(Image::StretchMode::Corner);
    for (const auto& [mode, firstEnd, lastStart] :
         {std::tuple{Image::StretchMode::Corner, 10, 50}, std::tuple{Image::StretchMode::Halves, 25, 35}}) {
        image.StretchMode.assign(mode);
        for (int x = 0; x < 60; ++x) {
            const bool shows = x < firstEnd || x >= lastStart;
            EXPECT_EQ(image.GetAlphaAt({static_cast<float>(x), 5}), shows ? 255 : 0) << x;
            EXPECT_EQ(At(static_cast<float>(x), 5) == red, shows) << x;
        }
    }
}

TEST_F(PaintedControls, AnImageFollowsThePictureOfItsOwn)
{
    Image image(ui, &root);
    image.OwnBitmap()->SetSize(20, 8);
    EXPECT_EQ(image.GetSize(), (Point{20, 8}));
    image.OwnBitmap()->FillRect({0, 0, 20, 8}, green);
    EXPECT_EQ(Found(green), (Rect{0, 0, 20, 8}));
}

TEST_F(PaintedControls, ALightGoesOffByItself)
{
    Bitmap on(ui.Backing());
    Bitmap off(ui.Backing());
    for (Bitmap* bitmap : {&on, &off})
        bitmap->SetSize(6, 6);
    on.FillRect({0, 0, 6, 6}, green);
    off.FillRect({0, 0, 6, 6}, blue);
    Light light(ui, &root, {&on, &off});
    EXPECT_EQ(At(3, 3), blue);
    light.Value.assign(true);
    EXPECT_EQ(At(3, 3), green);
    ui.AdvanceTime(99);
    EXPECT_EQ(At(3, 3), green);
    ui.AdvanceTime(1);
    EXPECT_EQ(At(3, 3), blue);
    EXPECT_FALSE(light.GetTimer().Running.value());
    light.Value.assign(true);
    ui.AdvanceTime(60);
    light.Value.assign(false);
    light.Value.assign(true);
    ui.AdvanceTime(99);  // flashes in full once more
    EXPECT_EQ(At(3, 3), green);
}

TEST_F(PaintedControls, LinesAreStackedAndPlaced)
{
    MultiLabel label(ui, &root, nullptr, 3);
    label.SetBounds({10, 5, 70, 45});
    label.Insets.assign({2, 3, 4, 5});  // leaves 12..66 by 8..40
    label.SetText(0, "12345");
    label.SetText(2, "123");
    label.Line(0).Color.assign(red);
    label.Line(2).Color.assign(green);
    struct Row {
        Alignment alignment;
        Layout layout;
        Rect first, second;
    };
    for (const auto& [alignment, layout, first, second] :
         {Row{Alignment::Left, Layout::Top, {12, 8, 32, 18}, {12, 18, 24, 28}},
          Row{Alignment::Right, Layout::Bottom, {46, 20, 66, 30}, {54, 30, 66, 40}},
          Row{Alignment::Centre, Layout::Centre, {29, 13, 49, 23}, {33, 23, 45, 33}}}) {
        label.Alignment.assign(alignment);
        label.Layout.assign(layout);
        EXPECT_EQ(Found(red), first);
        EXPECT_EQ(Found(green), second);
    }
    EXPECT_EQ(label.GetContentSize(), (Point{26, 28}));
    label.SetText(0, "");
    EXPECT_EQ(Found(green), (Rect{33, 18, 45, 28}));
}

TEST_F(PaintedControls, AnImageLabelShowsOneOfItsStack)
{
    Bitmap stack(ui.Backing());
    stack.SetSize(10, 30);
    stack.FillRect({0, 10, 10, 20}, green);
    ImageLabel label(ui, &root, stack, 3);
    EXPECT_EQ(label.GetSize(), (Point{10, 10}));
    EXPECT_TRUE(Found(green).IsEmpty());
    label.Index.assign(1);
    EXPECT_EQ(Found(green), (Rect{0, 0, 10, 10}));
    label.Index.assign(3);
    EXPECT_TRUE(Found(green).IsEmpty());
}

}  // namespace gui
