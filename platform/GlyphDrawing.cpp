#include "platform/GlyphDrawing.h"

#include <algorithm>
#include <cmath>

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

}  // namespace

void GlyphCoverage::AddLine(const ShapedLine& line, float pixelsPerEm, bool slanted, int x, int baseline)
{
    for (const PlacedGlyph& glyph : line.glyphs) {
        FT_GlyphSlot slot = LoadOutline(glyph, pixelsPerEm, slanted);
        if (!slot)
            continue;
        const float place = glyph.x * pixelsPerEm;
        const float whole = std::floor(place);
        FT_Outline_Translate(&slot->outline, static_cast<FT_Pos>((place - whole) * fixedOne), 0);
        if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0)
            continue;
        const int lift = static_cast<int>(std::lround(glyph.y * pixelsPerEm));
        AddBitmap(slot->bitmap, x + static_cast<int>(whole) + slot->bitmap_left,
                  baseline + lift - slot->bitmap_top);
    }
}

void GlyphCoverage::AddBitmap(const FT_Bitmap& bitmap, int left, int top)
{
    const int rows = static_cast<int>(bitmap.rows);
    const int columns = static_cast<int>(bitmap.width);
    for (int y = std::max(0, -top); y < std::min(rows, height - top); ++y) {
        const unsigned char* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        for (int x = std::max(0, -left); x < std::min(columns, width - left); ++x) {
            std::uint8_t& covered = coverage[Place(left + x, top + y)];
            covered = static_cast<std::uint8_t>(std::min(covered + row[x], 255));
        }
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
        FT_GlyphSlot slot = LoadOutline(glyph, pixelsPerEm, slanted);
        if (!slot)
            continue;
        FT_BBox box;
        FT_Outline_Get_CBox(&slot->outline, &box);
        const float place = glyph.x * pixelsPerEm;
        ink.left = std::min(ink.left, place + static_cast<float>(box.xMin) / fixedOne);
        ink.right = std::max(ink.right, place + static_cast<float>(box.xMax) / fixedOne);
    }
    return ink;
}

}  // namespace gui
