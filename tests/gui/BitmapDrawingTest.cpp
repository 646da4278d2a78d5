#include "gui/Bitmap.h"
#include "gui/Gradient.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace gui {

namespace {

struct Drawing : testing::Test {
    void Resize(float width, float height, gui::Color ground = gui::Color::White())
    {
        bitmap.SetSize(width, height);
        bitmap.FillRect({0, 0, width, height}, ground);
    }
    std::uint32_t At(int x, int y) const
    {
        return bitmap.GetPixels()[static_cast<std::ptrdiff_t>(y) * bitmap.GetSize().x + x];
    }
    /// How much of a white pixel is covered by black, 0..1.
    double CoverAt(int x, int y) const { return (255 - (At(x, y) & 0xFF)) / 255.0; }
    double ColumnCover(int x) const
    {
        double sum = 0;
        for (int y = 0; y < bitmap.GetSize().y; ++y)
            sum += CoverAt(x, y);
        return sum;
    }

    DeviceBacking backing;
    Bitmap bitmap{backing};
    const Rect everything{0, 0, 1000, 1000};
};

/// c a / 255 to the nearest, by division.
std::uint32_t Times(std::uint32_t c, std::uint32_t a) { return (2 * c * a + 255) / 510; }

/// The blending rule, a channel at a time.
std::uint32_t Blended(std::uint32_t source, std::uint32_t below, std::uint32_t alpha)
{
    const std::uint32_t a = Times(255 - (source >> 24), alpha);
    std::uint32_t result = 0;
    for (const int shift : {0, 8, 16})
        result |= (Times(source >> shift & 0xFF, alpha) + Times(below >> shift & 0xFF, 255 - a)) << shift;
    return result | (255 - (a + Times(255 - (below >> 24), 255 - a))) << 24;
}

struct Function : ICurve {
    explicit Function(float (*function)(float)) : value(function) {}
    float ValueAt(float x) const override { return value(x); }
    float (*value)(float);
};

}  // namespace

TEST_F(Drawing, CopiesBlendByTheRuleAtEveryWidthAndAlpha)
{
    std::minstd_rand random(3);
    const auto pixel = [&random] {
        const auto byte = [&random] { return static_cast<std::uint8_t>(random() >> 8); };
        constexpr std::uint8_t alphas[] = {0, 255, 128, 1, 254};
        return ToPixel({byte(), byte(), byte(), alphas[random() % 5]});
    };
    for (const int alpha : {255, 128, 1, 0}) {
        for (int width = 1; width < 10; ++width) {
            Bitmap source(backing);
            source.SetSize(static_cast<float>(width), 1);
            bitmap.SetSize(static_cast<float>(width) + 2, 1);
            std::vector<std::uint32_t> expected;
            for (int i = 0; i < width + 2; ++i)
                expected.push_back(bitmap.Pixels()[i] = pixel());
            for (int i = 0; i < width; ++i) {
                source.Pixels()[i] = pixel();
                std::uint32_t& place = expected[static_cast<std::size_t>(i) + 1];
                place = Blended(source.Pixels()[i], place, static_cast<std::uint32_t>(alpha));
            }
            bitmap.DrawBitmap(source, {1, 0, static_cast<float>(width) + 1, 1}, {}, alpha);
            EXPECT_EQ(expected, std::vector(bitmap.Pixels(), bitmap.Pixels() + width + 2)) << width << alpha;
        }
    }
}

TEST_F(Drawing, AMaskTakesAwayByItsAlpha)
{
    Resize(3, 1);
    Bitmap source(backing);
    Bitmap mask(backing);
    source.SetSize(3, 1);
    source.FillRect({0, 0, 3, 1}, gui::Color::Black());
    mask.SetSize(4, 1);
    mask.SetPixel({1, 0}, {1, 2, 3, 128});
    mask.SetPixel({2, 0}, {1, 2, 3, 255});
    bitmap.DrawMaskedBitmap(source, {0, 0, 3, 1}, {}, mask, {0, 0}, 255);
    EXPECT_EQ(At(0, 0), 0x00FFFFFFu);
    EXPECT_EQ(At(1, 0), 0x007F7F7Fu);
    EXPECT_EQ(At(2, 0), 0x00000000u);
    bitmap.DrawMaskedBitmap(source, {0, 0, 3, 1}, {}, mask, {2, 0}, 255);  // one column is left of the mask
    EXPECT_EQ(At(0, 0), 0x00000000u);
    EXPECT_EQ(At(1, 0), 0x007F7F7Fu);
}

TEST_F(Drawing, PartsOfAPictureFitTogetherAtBrokenScales)
{
    backing.SetLevel(3);
    Bitmap source(backing);
    source.SetSize(40, 1);
    for (int i = 0; i < source.GetSize().x; ++i)
        source.Pixels()[i] = static_cast<std::uint32_t>(i);
    bitmap.SetSize(60, 1);
    // The same picture in pieces that end anywhere, as dirty rectangles do.
    for (float x = 5.1f; x < 45.0f; x += 3.37f) {
        const Rect clip{x, 0, x + 3.37f, 1};
        bitmap.GetCanvas().Clip.assign(clip);
        bitmap.GetCanvas().DrawBitmapAt(source, {5.1f, 0});
    }
    const int start = ToDevice(5.1f, 1.75f);
    for (int i = 0; i < source.GetSize().x; ++i)
        ASSERT_EQ(At(start + i, 0), static_cast<std::uint32_t>(i));
}

TEST_F(Drawing, AGradientIsReadAtThePixelsMiddle)
{
    Gradient gradient(gui::Color{0, 100, 255, 255}, gui::Color{200, 100, 0, 255});
    struct Row {
        Direction direction;
        float start, end;
    };
    for (const auto& [direction, start, end] : {Row{Direction::Right, 2, 12}, Row{Direction::Down, 2, 12},
                                                Row{Direction::Left, 12, 2}, Row{Direction::Up, 12, 2}}) {
        Resize(16, 16);
        bitmap.FillGradient(gradient, {0, 0, 16, 16}, direction, start, end, 255);
        for (int i = 0; i < 16; ++i) {
            const float share =
                std::clamp((static_cast<float>(i) + 0.5f - start) / (end - start), 0.0f, 1.0f);
            const auto red = static_cast<std::uint32_t>(200 * share + 0.5f);
            const auto blue = static_cast<std::uint32_t>(255 - 255 * share + 0.5f);
            const std::uint32_t found = IsHorizontal(direction) ? At(i, 5) : At(5, i);
            EXPECT_EQ(found, red << 16 | 100u << 8 | blue) << static_cast<int>(direction) << ' ' << i;
        }
    }
    EXPECT_TRUE(gradient.IsOpaque());
    gradient.AddStop({0, 0, 0, 0}, 0.5f);
    EXPECT_FALSE(gradient.IsOpaque());
    EXPECT_FALSE(Gradient().IsOpaque());
    EXPECT_EQ(gradient.GetColorAt(0.25f), (gui::Color{0, 50, 128, 128}));  // 127.5 rounds up
    EXPECT_EQ(gradient.FindSegment(0.75f), 2);
    EXPECT_EQ(gradient.FindSegment(-1), 0);
    EXPECT_EQ(gradient.FindSegment(1), 3);
}

TEST_F(Drawing, LevelLinesCoverWholePixels)
{
    struct Row {
        int level;
        float width;
        int thickness;
    };
    for (const auto& [level, width, thickness] :
         {Row{0, 1, 1}, Row{0, 2, 2}, Row{1, 1, 1}, Row{4, 1, 2}, Row{6, 1, 3}, Row{7, 1, 3}}) {
        backing.SetLevel(level);
        Resize(20, 20);
        const float scale = backing.Scale();
        bitmap.DrawLine({4 / scale, 8}, {10 / scale, 8}, everything, gui::Color::Black(), width);
        for (int x = 0; x < 16; ++x) {
            EXPECT_EQ(ColumnCover(x), x >= 4 && x <= 10 ? thickness : 0) << level << ' ' << x;
            for (int y = 0; y < bitmap.GetSize().y; ++y)
                EXPECT_EQ(CoverAt(x, y), std::round(CoverAt(x, y)));
        }
    }
}

TEST_F(Drawing, LinesAreEquallyThickAtEveryAngle)
{
    for (int degrees = 1; degrees < 180; degrees += 7) {
        Resize(200, 200);
        const double angle = degrees * std::numbers::pi / 180;
        const Point reach{static_cast<float>(80 * std::cos(angle)), static_cast<float>(80 * std::sin(angle))};
        bitmap.DrawLine(Point{100, 100} - reach, Point{100, 100} + reach, everything, gui::Color::Black(), 2);
        // Across the longer axis a line of width 2 is 2 / cos of the angle to it.
        const double across = 2 / std::max(std::abs(std::cos(angle)), std::abs(std::sin(angle)));
        const bool steep = std::abs(reach.y) > std::abs(reach.x);
        for (int i = 60; i < 140; ++i) {
            double sum = 0;
            for (int k = 0; k < 200; ++k)
                sum += steep ? CoverAt(k, i) : CoverAt(i, k);
            // Each of the touched pixels rounds to 1 / 255.
            ASSERT_NEAR(sum, across, 0.012) << degrees;
        }
    }
}

TEST_F(Drawing, LinesStayWithinTheClipAndShortOnesDrawNothing)
{
    Resize(20, 20);
    bitmap.DrawLine({5, 5}, {5.005f, 5.005f}, everything, gui::Color::Black(), 4);
    bitmap.DrawLine({2, 2}, {18, 17}, {8, 8, 12, 12}, gui::Color::Black(), 3);
    bitmap.DrawLine({-1e9f, 3}, {1e9f, 1e9f}, everything, gui::Color::Black(), 1);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            EXPECT_TRUE(CoverAt(x, y) == 0 || (x >= 8 && x < 12 && y >= 8 && y < 12)) << x << ' ' << y;
    EXPECT_GT(CoverAt(10, 9), 0.9);
}

TEST_F(Drawing, AFilledCurveCoversWhatLiesBetweenItAndTheBaseline)
{
    backing.SetLevel(4);
    const Function slope([](float x) { return 5 + x * 0.35f; });
    CurveStyle style;
    style.layers.push_back({&slope, 30, gui::Color::Black(), gui::Color::Black()});
    Resize(50, 50);
    bitmap.DrawCurves(style, {0, 0, 50, 50}, {0, 0, 50, 50}, {0, 3}, 1, 255);
    for (int x = 0; x < 100; ++x) {
        const double top = (3 + 5 + (x + 0.5) / 2 * 0.35) * 2;
        EXPECT_NEAR(ColumnCover(x), 66 - top, 0.01) << x;
    }
}

TEST_F(Drawing, ACurvesLineIsEquallyThickOnSlopesAndCoversJointsOnce)
{
    const Function curve([](float x) { return x < 50 ? 20 + x : 120 - x; });
    CurveStyle style;
    style.lineColor = gui::Color{0, 0, 0, 128};
    style.lineWidth = 4;
    style.layers.push_back({&curve, 0, {}, {}});
    Resize(100, 100);
    bitmap.DrawCurves(style, everything, everything, {}, 0, 255);
    for (int x = 5; x < 95; ++x) {
        if (x >= 44 && x < 56)
            continue;
        EXPECT_NEAR(ColumnCover(x), 4 * std::numbers::sqrt2 * 128 / 255, 0.1) << x;
    }
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            ASSERT_LE(CoverAt(x, y), 0.503) << x << ' ' << y;
    bitmap.DrawCurves(style, everything, everything, {}, 1, 255);  // no line
}

TEST_F(Drawing, CurvesWithoutNumbersDrawWithinTheirRectangle)
{
    const Function wild([](float x) { return x < 5 ? NAN : x < 10 ? INFINITY : x < 15 ? -INFINITY : 1e30f; });
    CurveStyle style;
    style.lineColor = gui::Color::Black();
    style.layers.push_back({&wild, 10, gui::Color::Black(), gui::Color::Black()});
    Resize(20, 20);
    bitmap.DrawCurves(style, {2, 2, 18, 18}, everything, {}, 0, 255);
    for (int i = 0; i < 20; ++i)
        for (const int edge : {0, 1, 18, 19})
            EXPECT_TRUE(CoverAt(i, edge) == 0 && CoverAt(edge, i) == 0);
}

TEST_F(Drawing, ABandIsAsStrongAsTheCurve)
{
    const Function ramp([](float x) { return x / 100; });
    Resize(100, 20);
    bitmap.DrawCurveBand(BandMode::Columns, ramp, {0, 0, 100, 20}, {0, 0, 100, 20}, {}, gui::Color::Black(),
                         gui::Color::Black(), 0);
    for (int x = 0; x < 100; ++x)
        EXPECT_NEAR(CoverAt(x, 10), (x + 0.5) / 100, 0.011) << x;

    Resize(100, 20);
    const Function full([](float) { return 2.0f; });
    bitmap.DrawCurveBand(BandMode::Middle, full, {0, 0, 100, 20}, {0, 0, 100, 20}, {}, gui::Color::Black(),
                         {}, 0.5f);
    for (int y = 0; y < 20; ++y)
        EXPECT_NEAR(CoverAt(50, y), 1 - std::abs(y + 0.5 - 10) / 10, 0.01) << y;
}

}  // namespace gui
