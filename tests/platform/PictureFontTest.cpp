#include "platform/FreeTypeText.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

namespace gui {

namespace {

/// Numbers in the order of a font file's bytes.
class FontBytes {
public:
    FontBytes& Add(std::size_t bytes, std::uint32_t number)
    {
        for (std::size_t i = bytes; i-- > 0;)
            text += static_cast<char>(number >> (8 * i) & 255);
        return *this;
    }
    FontBytes& AddShorts(std::initializer_list<std::uint32_t> numbers)
    {
        for (const std::uint32_t number : numbers)
            Add(2, number);
        return *this;
    }
    FontBytes& AddZeros(std::size_t bytes) { return text.append(bytes, '\0'), *this; }
    FontBytes& AddText(const std::string& bytes) { return text += bytes, *this; }
    const std::string& Text() const { return text; }

private:
    std::string text;
};

std::string FontOf(const std::vector<std::pair<std::string, std::string>>& tables)
{
    FontBytes head, body;
    const auto count = static_cast<std::uint32_t>(tables.size());
    head.Add(4, 0x00010000).AddShorts({count, 0, 0, 0});
    for (const auto& [tag, table] : tables) {
        const std::size_t offset = 12 + 16 * tables.size() + body.Text().size();
        head.AddText(tag).Add(4, 0).Add(4, static_cast<std::uint32_t>(offset));
        head.Add(4, static_cast<std::uint32_t>(table.size()));
        body.AddText(table).AddZeros((4 - table.size() % 4) % 4);
    }
    return head.Text() + body.Text();
}

constexpr std::uint32_t side = 20;  // of the only glyph, pixels of its only size

/// A font of one character, a square as wide as an em, a tenth of it below the baseline.
/// @param pixel  one of the square's, of four bytes with colour or one without
std::string SquareFont(std::uint32_t character, const std::string& pixel)
{
    const bool coloured = pixel.size() == 4;
    FontBytes head, hhea, maxp, hmtx, cmap, places, pictures;
    head.Add(4, 0x10000).Add(4, 0x10000).Add(4, 0).Add(4, 0x5F0F3CF5).AddShorts({0, 1000}).AddZeros(16);
    head.AddShorts({0, 0, 1000, 1000, 0, 8, 2, 0, 0});
    hhea.Add(4, 0x10000).AddShorts({1000, 0, 0, 1000}).AddZeros(22).AddShorts({2});
    maxp.Add(4, 0x5000).AddShorts({2});
    hmtx.AddShorts({1000, 0, 1000, 0});
    cmap.AddShorts({0, 1, 3, 10}).Add(4, 12);
    cmap.AddShorts({12, 0}).Add(4, 28).Add(4, 0).Add(4, 1);
    cmap.Add(4, character).Add(4, character).Add(4, 1);

    const std::uint32_t pictureSize = 5 + side * side * static_cast<std::uint32_t>(pixel.size());
    places.Add(4, coloured ? 0x30000 : 0x20000).Add(4, 1);
    places.Add(4, 56).Add(4, 8 + 16).Add(4, 1).Add(4, 0);  // where the index is
    for (int axis = 0; axis < 2; ++axis)
        places.Add(1, side).Add(1, 0).Add(1, side).AddZeros(9);  // metrics of lines
    places.AddShorts({1, 1}).Add(1, side).Add(1, side).Add(1, coloured ? 32 : 8).Add(1, 1);
    places.AddShorts({1, 1}).Add(4, 8);  // the index
    places.AddShorts({1, 1}).Add(4, 4).Add(4, 0).Add(4, pictureSize);
    pictures.Add(4, coloured ? 0x30000 : 0x20000);
    pictures.Add(1, side).Add(1, side).Add(1, 0).Add(1, side - side / 10).Add(1, side);
    for (std::uint32_t i = 0; i < side * side; ++i)
        pictures.AddText(pixel);
    return FontOf({{coloured ? "CBDT" : "EBDT", pictures.Text()},
                   {coloured ? "CBLC" : "EBLC", places.Text()},
                   {"cmap", cmap.Text()},
                   {"head", head.Text()},
                   {"hhea", hhea.Text()},
                   {"hmtx", hmtx.Text()},
                   {"maxp", maxp.Text()}});
}

/// A system with a font for U+10FFFD, and with one that lacks it.
class PictureFonts : public testing::TestWithParam<bool> {
protected:
    void Install(const std::string& font)
    {
        folder.write("Square.ttf", font);
        folder.write("Other.ttf", SquareFont(0x10FFFC, "\xFF"));
        folder.write("fonts.conf", "<fontconfig><dir>" + (folder / "").string() + "</dir><cachedir>" +
                                       (folder / "cache").string() + "</cachedir></fontconfig>");
        setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1);
    }
    ~PictureFonts() override { unsetenv("FONTCONFIG_FILE"); }
    TemporaryFolder folder;
};

}  // namespace

TEST_P(PictureFonts, AreDrawnInTheSizeOfTheText)
{
    const bool coloured = GetParam();
    Install(
        SquareFont(0x10FFFD, coloured ? std::string("\x00\x40\x80\x80", 4) : "\xFF"));  // half of an orange
    DeviceBacking backing;
    FreeTypeText text(backing);
    text.Color.assign(Color{0, 0, 255, 255});
    text.String.assign("\xF4\x8F\xBF\xBD");
    for (const float points : {7.5f, 15.0f, 30.0f}) {  // 10, 20 and 40 pixels
        text.Size.assign(points);
        const int pixels = static_cast<int>(points / 0.75f);
        EXPECT_EQ(text.GetWidth(), static_cast<float>(pixels));
        const Bitmap& picture = text.GetBitmap();
        Rect ink;
        for (float y = 0; y < text.GetHeight(); ++y)
            for (float x = 0; x < text.GetWidth(); ++x) {
                const Color found = picture.GetPixel({x, y});
                if (found.a == 0)
                    continue;
                EXPECT_EQ(found, (coloured ? Color{255, 127, 0, 128} : text.Color.value())) << points;
                ink = ink.United(Rect::At({x, y}, {1, 1}));
            }
        EXPECT_EQ(ink.Size(), (Point{static_cast<float>(pixels), static_cast<float>(pixels)})) << points;
    }
    text.Color.assign(Color{0, 0, 255, 128});
    EXPECT_EQ(text.GetBitmap().GetPixel({20, 20}).a, coloured ? 64 : 128);  // fades with the letters
}

INSTANTIATE_TEST_SUITE_P(WithColoursAndWithout, PictureFonts, testing::Bool());

}  // namespace gui
