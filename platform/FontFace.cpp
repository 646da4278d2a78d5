#include "platform/FontFace.h"

#include <stdexcept>

#include FT_PARAMETER_TAGS_H
#include FT_TRUETYPE_TABLES_H

namespace gui {

namespace {

FT_Face Checked(FT_Error error, FT_Face face)
{
    if (error != 0)
        throw std::runtime_error("Invalid font");
    return face;
}

FT_Face OpenMemory(FT_Library library, std::span<const std::byte> bytes)
{
    FT_Face face = nullptr;
    const FT_Error error = FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(bytes.data()),
                                              static_cast<FT_Long>(bytes.size()), 0, &face);
    return Checked(error, face);
}

FT_Face OpenFile(FT_Library library, const std::string& path, int index)
{
    FT_Face face = nullptr;
    const FT_Error error = FT_New_Face(library, path.c_str(), index, &face);
    return Checked(error, face);
}

}  // namespace

FontFace::FontFace(FT_Library library, std::span<const std::byte> bytes)
    : FontFace(OpenMemory(library, bytes),
               hb_blob_create(reinterpret_cast<const char*>(bytes.data()),
                              static_cast<unsigned>(bytes.size()), HB_MEMORY_MODE_READONLY, nullptr, nullptr),
               0)
{}

FontFace::FontFace(FT_Library library, const std::string& path, int index)
    : FontFace(OpenFile(library, path, index), hb_blob_create_from_file(path.c_str()), index)
{}

FontFace::FontFace(FT_Face opened, hb_blob_t* blob, int index) : drawn(opened)
{
    // The upper half of an index names an instance of a variable font.
    hb_face_t* face = hb_face_create(blob, static_cast<unsigned>(index) & 0xFFFF);
    hb_blob_destroy(blob);
    shaped.reset(hb_font_create(face));
    unitsPerEm = static_cast<int>(hb_face_get_upem(face));
    hb_face_destroy(face);
    // Small sizes are measured like large ones: font units carry no rounding to pixels.
    hb_font_set_scale(shaped.get(), unitsPerEm, unitsPerEm);
    // Without tables its glyphs can't be placed.
    if (!FT_IS_SFNT(drawn) || !(FT_IS_SCALABLE(drawn) || FT_HAS_FIXED_SIZES(drawn)))
        throw std::runtime_error("Invalid font");
}

void FontFace::DarkenStems()
{
    FT_Bool on = 1;
    FT_Parameter darkening{FT_PARAM_TAG_STEM_DARKENING, &on};
    FT_Face_Properties(drawn.get(), 1, &darkening);
}

float FontFace::CapHeight() const
{
    constexpr unsigned knowsCapitals = 2;  // the table's version that has the figure
    const auto* metrics = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(drawn.get(), FT_SFNT_OS2));
    const bool known = metrics && metrics->version >= knowsCapitals && metrics->sCapHeight > 0;
    return known ? Ems(metrics->sCapHeight) : 0.75f * Ascent();
}

bool FontFace::HasPictures() const
{
    // Coloured fonts may have outlines too, which are but a placeholder.
    return FT_HAS_FIXED_SIZES(drawn) && (FT_HAS_COLOR(drawn) || !FT_IS_SCALABLE(drawn));
}

bool FontFace::HasGlyph(char32_t character) const { return FT_Get_Char_Index(drawn.get(), character) != 0; }

}  // namespace gui
