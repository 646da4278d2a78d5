#include "platform/FreeTypeText.h"

#include "support/GoldenPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace gui {

namespace {

struct TextTest : testing::Test {
    float WidthOf(const char* string)
    {
        text.String.assign(string);
        return text.GetWidth();
    }
    /// The part of the light between ground and text that the text's picture takes or gives, in whole pixels.
    double Weight(gui::Color color, double ground)
    {
        text.Color.assign(color);
        const Bitmap& picture = text.GetBitmap();
        const double letters = color.r / 255.0;
        double sum = 0;
        for (int i = 0; i < picture.GetSize().x * picture.GetSize().y; ++i) {
            const double alpha = (255 - (picture.GetPixels()[i] >> 24)) / 255.0;
            const double mixed = std::pow(ground + (letters - ground) * alpha, 1.4);
            sum += (mixed - std::pow(ground, 1.4)) / (std::pow(letters, 1.4) - std::pow(ground, 1.4));
        }
        return sum;
    }
    DeviceBacking backing;
    FreeTypeText text{backing};
};

}  // namespace

TEST_F(TextTest, IsAsWideAtEveryScale)
{
    for (const char* string : {"Feedback", "-12.5 dB", "AVAToy", "i"}) {
        for (const float size : {7.0f, 8.0f, 9.5f, 12.0f}) {
            text.Size.assign(size);
            backing.SetLevel(7);
            const float reference = WidthOf(string);
            const float height = text.GetHeight();
            for (int level = 0; level < DeviceBacking::levelCount; ++level) {
                backing.SetLevel(level);
                EXPECT_NEAR(WidthOf(string), reference, 1.0f / backing.Scale() + 0.34f) << string << level;
                EXPECT_NEAR(text.GetHeight(), height, 1.0f / backing.Scale() + 0.34f) << string << level;
            }
        }
    }
}

TEST_F(TextTest, IsKerned)
{
    text.Size.assign(60);
    EXPECT_LT(WidthOf("AVAVAV"), WidthOf("AAAVVV") - 10);
}

TEST_F(TextTest, ABoxIsMeasuredBeforeItIsDrawnAndFollowsEveryChange)
{
    backing.SetLevel(4);
    const float width = WidthOf("Delay");
    const float height = text.GetHeight();
    EXPECT_EQ(text.GetBitmap().GetSize(),
              (BasicPoint<int>{static_cast<int>(width * 2), static_cast<int>(height * 2)}));
    text.Bold.assign(true);
    EXPECT_GT(text.GetWidth(), width);
    text.Size.assign(16);
    EXPECT_NEAR(text.GetHeight(), 2 * height, 1);
    EXPECT_EQ(text.GetBitmap().GetSize().y, static_cast<int>(text.GetHeight() * 2));
    backing.SetLevel(0);
    EXPECT_EQ(text.GetBitmap().GetSize().y, static_cast<int>(text.GetHeight()));
    text.String.assign("");
    EXPECT_EQ(text.GetWidth(), 0);
    EXPECT_EQ(text.GetBitmap().GetPixels(), nullptr);
}

TEST_F(TextTest, MaxWidthLimitsOnlyWithAStyle)
{
    const float whole = WidthOf("A rather long piece of text");
    const float height = text.GetHeight();
    text.LineStyle.assign(Text::LineStyle::Ellipsis);
    EXPECT_EQ(text.GetWidth(), whole);  // no `MaxWidth`, no limit
    text.MaxWidth.assign(60);
    EXPECT_LE(text.GetWidth(), 60);
    EXPECT_GT(text.GetWidth(), 45);
    EXPECT_EQ(text.GetHeight(), height);
    text.LineStyle.assign(Text::LineStyle::Wrapped);
    EXPECT_LE(text.GetWidth(), 60);
    EXPECT_EQ(text.GetHeight(), 3 * height);
    EXPECT_EQ(text.GetBitmap().GetSize().y, 3 * height);
}

TEST_F(TextTest, WrappedLinesStandWhereTheyAreAligned)
{
    text.MaxWidth.assign(60);
    text.LineStyle.assign(Text::LineStyle::Wrapped);
    text.Underline.assign(true);  // as long as its line
    WidthOf("Modulation Amt");
    const int columns = text.GetBitmap().GetSize().x;
    /// The columns left and right of the second line.
    const auto roomBeside = [&] {
        const Bitmap& picture = text.GetBitmap();
        const int half = picture.GetSize().y / 2;
        int first = columns, end = 0;
        for (int y = half; y < 2 * half; ++y)
            for (int x = 0; x < columns; ++x)
                if (picture.GetPixels()[y * columns + x] != transparentPixel)
                    first = std::min(first, x), end = std::max(end, x + 1);
        return BasicPoint<int>{first, columns - end};
    };
    const BasicPoint<int> left = roomBeside();
    EXPECT_GT(left.y, 20);
    text.Alignment.assign(Alignment::Right);
    EXPECT_NEAR(roomBeside().y, left.x, 1);
    EXPECT_NEAR(roomBeside().x, left.y, 1);
    text.Alignment.assign(Alignment::Centre);
    EXPECT_NEAR(roomBeside().x, roomBeside().y, 1);
    EXPECT_EQ(text.GetBitmap().GetSize().x, columns);
}

TEST_F(TextTest, CapitalsStandInTheMiddleOnceShifted)
{
    text.String.assign("H");
    for (const int level : {0, 1, 4, 7}) {
        for (const float size : {7.0f, 8.0f, 13.0f, 20.0f}) {
            backing.SetLevel(level);
            text.Size.assign(size);
            const Bitmap& picture = text.GetBitmap();
            const int columns = picture.GetSize().x;
            const int rows = picture.GetSize().y;
            const auto isInk = [&](int row) {
                const std::uint32_t* first = picture.GetPixels() + row * columns;
                // More than half covered: the fourth byte is 255 less the alpha.
                return std::any_of(first, first + columns,
                                   [](std::uint32_t pixel) { return pixel >> 24 < 128; });
            };
            int above = 0;
            while (above < rows && !isInk(above))
                ++above;
            int below = 0;
            while (below < rows && !isInk(rows - 1 - below))
                ++below;
            const float shift = text.GetBaselineShift() * backing.Scale();
            EXPECT_NEAR(static_cast<float>(above) + shift, static_cast<float>(below) - shift, 2.0f)
                << "level " << level << ", " << size << " points";
        }
    }
}

TEST_F(TextTest, CarriesItsColourPremultiplied)
{
    text.Color.assign({200, 100, 50, 128});
    text.Size.assign(40);
    text.Bold.assign(true);
    WidthOf("I");
    const Bitmap& picture = text.GetBitmap();
    std::uint32_t strongest = transparentPixel;
    for (int i = 0; i < picture.GetSize().x * picture.GetSize().y; ++i)
        strongest = std::min(strongest, picture.GetPixels()[i]);
    EXPECT_EQ(strongest, ToPixel({200, 100, 50, 128}));
}

TEST_F(TextTest, WeighsTheSameDarkOnLightAndLightOnDark)
{
    WidthOf("Feedback Level");
    const double dark = Weight(gui::Color::Black(), 1);
    EXPECT_NEAR(Weight(gui::Color::White(), 0) / dark, 1.0, 0.01);
}

TEST_F(TextTest, UnderlinesUpToItsEndBelowTheLetters)
{
    WidthOf("Plain");
    const BasicPoint<int> size = text.GetBitmap().GetSize();
    const std::vector<std::uint32_t> plain(text.GetBitmap().GetPixels(),
                                           text.GetBitmap().GetPixels() + size.x * size.y);
    text.Underline.assign(true);
    int changed = 0;
    for (int y = 0; y < size.y; ++y) {
        bool isLine = true;
        for (int x = 0; x < size.x - 1; ++x)
            isLine = isLine && text.GetBitmap().GetPixels()[y * size.x + x] == 0;
        const bool differs = !std::equal(plain.begin() + y * size.x, plain.begin() + (y + 1) * size.x,
                                         text.GetBitmap().GetPixels() + y * size.x);
        EXPECT_EQ(differs, isLine);
        changed += isLine;
    }
    EXPECT_EQ(changed, 1);
}

TEST_F(TextTest, AnyBytesCanBeDrawn)
{
    text.MaxWidth.assign(30);
    for (const char* string :
         {"\xff\xc0\x80\xed\xa0\x80", "a\tb\x01", "\xe6\x97\xa5", "\xf0\x9f\x98\x80", "e\xcc\x81"}) {
        for (const auto style :
             {Text::LineStyle::Single, Text::LineStyle::Ellipsis, Text::LineStyle::Wrapped}) {
            text.LineStyle.assign(style);
            EXPECT_GT(WidthOf(string), 0) << string;
            EXPECT_NE(text.GetBitmap().GetPixels(), nullptr);
        }
    }
}

TEST_F(TextTest, CopiesAllButTheString)
{
    text.String.assign("One");
    text.Size.assign(20);
    text.Italic.assign(true);
    FreeTypeText other(backing);
    int changes = 0;
    other.OnChanged.addHandler(NotifyEvent::handler([&changes](void*) { ++changes; }));
    other.CopyFrom(text, "Two");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(other.String.value(), "Two");
    EXPECT_EQ(other.GetHeight(), text.GetHeight());
}

TEST_F(TextTest, LooksAsItDid)
{
    for (const int level : {0, 4}) {
        backing.SetLevel(level);
        Bitmap page(backing);
        page.SetSize(150, 60);
        page.FillRect({0, 0, 150, 60}, gui::Color::Rgb(0x202428));
        page.FillRect({0, 30, 150, 60}, gui::Color::Rgb(0xF0F0EE));
        text.String.assign("Feedback 12.5 dB AVAToy");
        float y = 2;
        for (const gui::Color color : {gui::Color::Rgb(0xE8E8E8), gui::Color::Rgb(0x101010)}) {
            for (const bool bold : {false, true}) {
                text.Bold.assign(bold);
                text.Color.assign(color);
                page.GetCanvas().DrawBitmapAt(text.GetBitmap(), {3, y});
                y += 14;
            }
        }
        EXPECT_EQ(differenceFromPicture(page, SORDELIN_PICTURES, "Text" + std::to_string(level)), "");
    }
}

}  // namespace gui
