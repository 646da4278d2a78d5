#include "platform/GlyphDrawing.h"

#include "gui/PixelRows.h"
#include "gui/Resampling.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include FT_BITMAP_H
#include FT_OUTLINE_H

namespace gui {

namespace {

constexpr float fixedOne = 64.0f;  // FreeType's coordinates are in 64ths of a pixel
constexpr float slant = 0.2126f;   // tan 12 degrees, as designed italics lean

/// The outline of a glyph, in the face's slot, with its stems on whole pixels vertically; null if there is
/// none.
FT_GlyphSlot LoadOutline(const PlacedGlyph& glyph, float pixelsPerEm, bool slanted)
{
    FT_Face face = glyph.face->Drawn();
    const auto size = static_cast<FT_F26Dot6>(std::lround(pixelsPerEm * fixedOne));
    constexpr FT_UInt pointsPerInch = 72;  // so that sizes are pixels
    if (FT_Set_Char_Size(face, 0, size, pointsPerInch, pointsPerInch) != 0 ||
        FT_Load_Glyph(face, glyph.index, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return nullptr;
    if (slanted) {
        const FT_Matrix lean{0x10000, static_cast<FT_Fixed>(slant * 0x10000), 0, 0x10000};
        FT_Outline_Transform(&face->glyph->outline, &lean);
    }
    return face->glyph;
}

/// A glyph that is a picture, in the size that its font has it in.
struct Strike {
    FT_GlyphSlot slot = nullptr;  // null if there is none
    float ratio = 1.0f;           // from its pixels to those it is shown with
};

/// Loads it from the smallest strike that needn't be enlarged, or the largest.
Strike LoadStrike(const PlacedGlyph& glyph, float pixelsPerEm)
{
    FT_Face face = glyph.face->Drawn();
    int chosen = 0;
    const auto sizeOf = [face](int i) {
        return static_cast<float>(face->available_sizes[i].y_ppem) / fixedOne;
    };
    for (int i = 1; i < face->num_fixed_sizes; ++i) {
        const bool isBetter = sizeOf(chosen) < pixelsPerEm
                                  ? sizeOf(i) > sizeOf(chosen)
                                  : sizeOf(i) >= pixelsPerEm && sizeOf(i) < sizeOf(chosen);
        if (isBetter)
            chosen = i;
    }
    if (!(sizeOf(chosen) > 0.0f) || FT_Select_Size(face, chosen) != 0 ||
        FT_Load_Glyph(face, glyph.index, FT_LOAD_COLOR) != 0 || face->glyph->format != FT_GLYPH_FORMAT_BITMAP)
        return {};
    return {face->glyph, pixelsPerEm / sizeOf(chosen)};
}

/// @param colour  premultiplied blue, green, red, and alpha
std::uint32_t PixelOf(const unsigned char* colour)
{
    return (255u - colour[3]) << 24 | static_cast<std::uint32_t>(colour[2]) << 16 |
           static_cast<std::uint32_t>(colour[1]) << 8 | colour[0];
}

/// The pixels of a glyph's picture; those of one without colours are black.
std::vector<std::uint32_t> PixelsOf(FT_GlyphSlot slot)
{
    std::vector<std::uint32_t> pixels;
    const FT_Bitmap& bitmap = slot->bitmap;
    const auto rowOf = [](const FT_Bitmap& rows, unsigned y) {
        return rows.buffer + static_cast<std::ptrdiff_t>(y) * rows.pitch;
    };
    if (bitmap.pixel_mode == FT_PIXEL_MODE_BGRA) {
        for (unsigned y = 0; y < bitmap.rows; ++y)
            for (unsigned x = 0; x < bitmap.width; ++x)
                pixels.push_back(PixelOf(rowOf(bitmap, y) + 4 * x));
        return pixels;
    }
    FT_Bitmap grey;
    FT_Bitmap_Init(&grey);
    if (FT_Bitmap_Convert(slot->library, &bitmap, &grey, 1) == 0) {
        const unsigned darkest = std::max(grey.num_grays - 1u, 1u);
        for (unsigned y = 0; y < grey.rows; ++y)
            for (unsigned x = 0; x < grey.width; ++x)
                pixels.push_back((255u - std::min(rowOf(grey, y)[x] * 255u / darkest, 255u)) << 24);
    }
    FT_Bitmap_Done(slot->library, &grey);
    return pixels;
}

int Nearest(float x) { return static_cast<int>(std::lround(x)); }

/// @param x         where the line starts, device pixels
/// @param baseline  device pixels from the top
GlyphPicture MakePicture(const PlacedGlyph& glyph, const Strike& strike, float pixelsPerEm, int x,
                         int baseline)
{
    const FT_Bitmap& bitmap = strike.slot->bitmap;
    const auto scaled = [&strike](unsigned length) {
        return std::max(Nearest(static_cast<float>(length) * strike.ratio), 1);
    };
    const auto left = static_cast<float>(strike.slot->bitmap_left);
    const auto top = static_cast<float>(strike.slot->bitmap_top);
    GlyphPicture picture{{x + Nearest(glyph.x * pixelsPerEm + left * strike.ratio),
                          baseline + Nearest(glyph.y * pixelsPerEm - top * strike.ratio)},
                         {scaled(bitmap.width), scaled(bitmap.rows)},
                         {}};
    const std::vector<std::uint32_t> pixels = PixelsOf(strike.slot);
    if (pixels.empty())
        return {};
    picture.pixels.resize(static_cast<std::size_t>(picture.size.x) *
                          static_cast<std::size_t>(picture.size.y));
    Resample(pixels, {static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows)}, strike.ratio,
             picture.size, picture.pixels.data());
    return picture;
}

}  // namespace

void GlyphCoverage::AddLine(const ShapedLine& line, float pixelsPerEm, bool slanted, int x, int baseline)
{
    for (const PlacedGlyph& glyph : line.glyphs) {
        if (glyph.face->HasPictures())
            AddPicture(glyph, pixelsPerEm, x, baseline);
        else
            AddOutline(glyph, pixelsPerEm, slanted, x, baseline);
    }
}

void GlyphCoverage::AddOutline(const PlacedGlyph& glyph, float pixelsPerEm, bool slanted, int x, int baseline)
{
    FT_GlyphSlot slot = LoadOutline(glyph, pixelsPerEm, slanted);
    if (!slot)
        return;
    const float place = glyph.x * pixelsPerEm;
    const float whole = std::floor(place);
    FT_Outline_Translate(&slot->outline, static_cast<FT_Pos>((place - whole) * fixedOne), 0);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0)
        return;
    AddBitmap(slot->bitmap, x + static_cast<int>(whole) + slot->bitmap_left,
              baseline + Nearest(glyph.y * pixelsPerEm) - slot->bitmap_top);
}

void GlyphCoverage::AddPicture(const PlacedGlyph& glyph, float pixelsPerEm, int x, int baseline)
{
    const Strike strike = LoadStrike(glyph, pixelsPerEm);
    if (!strike.slot)
        return;
    GlyphPicture picture = MakePicture(glyph, strike, pixelsPerEm, x, baseline);
    if (strike.slot->bitmap.pixel_mode == FT_PIXEL_MODE_BGRA) {
        pictures.push_back(std::move(picture));
        return;
    }
    // One without colours has those of the text.
    const std::uint32_t* pixel = picture.pixels.data();
    for (int row = 0; row < picture.size.y; ++row)
        for (int column = 0; column < picture.size.x; ++column)
            AddCovered(picture.place.x + column, picture.place.y + row,
                       255 - static_cast<int>(*pixel++ >> 24));
}

void GlyphCoverage::DrawPictures(std::uint32_t* pixels, int alpha) const
{
    for (const GlyphPicture& picture : pictures) {
        const DeviceRect shown =
            DeviceRect::At(picture.place, picture.size).Intersected({0, 0, width, height});
        if (shown.IsEmpty())
            continue;
        for (int y = shown.top; y < shown.bottom; ++y) {
            const std::ptrdiff_t from = static_cast<std::ptrdiff_t>(y - picture.place.y) * picture.size.x +
                                        shown.left - picture.place.x;
            BlendRow(pixels + Place(shown.left, y), picture.pixels.data() + from, shown.Width(), alpha);
        }
    }
}

void GlyphCoverage::AddCovered(int x, int y, int cover)
{
    if (x < 0 || x >= width || y < 0 || y >= height)
        return;
    std::uint8_t& covered = coverage[Place(x, y)];
    covered = static_cast<std::uint8_t>(std::min(covered + cover, 255));
}

void GlyphCoverage::AddBitmap(const FT_Bitmap& bitmap, int left, int top)
{
    const int rows = static_cast<int>(bitmap.rows);
    const int columns = static_cast<int>(bitmap.width);
    for (int y = 0; y < rows; ++y) {
        const unsigned char* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        for (int x = 0; x < columns; ++x)
            AddCovered(left + x, top + y, row[x]);
    }
}

void GlyphCoverage::AddRect(const DeviceRect& rect)
{
    const DeviceRect within = rect.Intersected({0, 0, width, height});
    for (int y = within.top; y < within.bottom; ++y)
        std::fill_n(coverage.begin() + static_cast<std::ptrdiff_t>(Place(within.left, y)),
                    std::max(within.Width(), 0), std::uint8_t{255});
}

InkExtent InkOf(const ShapedLine& line, float pixelsPerEm, bool slanted)
{
    InkExtent ink{0.0f, 0.0f};
    for (const PlacedGlyph& glyph : line.glyphs) {
        const float start = glyph.x * pixelsPerEm;
        if (glyph.face->HasPictures()) {
            const Strike strike = LoadStrike(glyph, pixelsPerEm);
            if (!strike.slot)
                continue;
            const auto from = static_cast<float>(strike.slot->bitmap_left);
            const auto length = static_cast<float>(strike.slot->bitmap.width);
            ink.left = std::min(ink.left, start + from * strike.ratio);
            ink.right = std::max(ink.right, start + (from + length) * strike.ratio);
            continue;
        }
        FT_GlyphSlot slot = LoadOutline(glyph, pixelsPerEm, slanted);
        if (!slot)
            continue;
        FT_BBox box;
        FT_Outline_Get_CBox(&slot->outline, &box);
        ink.left = std::min(ink.left, start + static_cast<float>(box.xMin) / fixedOne);
        ink.right = std::max(ink.right, start + static_cast<float>(box.xMax) / fixedOne);
    }
    return ink;
}

}  // namespace gui
