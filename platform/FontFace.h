#pragma once

#include "platform/Release.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include <ft2build.h>
#include FT_FREETYPE_H
#include <hb.h>

namespace gui {

/// One font, for drawing its glyphs and for placing them. Lengths are ems: they hold for every size.
class FontFace {
public:
    /// A font in memory, which stays there. Throws std::runtime_error if it is none.
    FontFace(FT_Library library, std::span<const std::byte> bytes);
    /// A font of a file that may hold several.
    FontFace(FT_Library library, const std::string& path, int index);

    /// Thickens the stems of small sizes, which otherwise come out grey for being thinner than a pixel.
    void DarkenStems();

    bool HasGlyph(char32_t character) const;
    /// True if its glyphs are pictures of a few sizes, coloured or not, rather than outlines.
    bool HasPictures() const;
    float Ascent() const { return Ems(drawn->ascender); }
    float Descent() const { return -Ems(drawn->descender); }
    /// The height of capitals without a foot or a head, as of "H".
    float CapHeight() const;
    float UnderlineDepth() const { return -Ems(drawn->underline_position); }  // of its middle
    float UnderlineThickness() const { return Ems(drawn->underline_thickness); }
    float Ems(int fontUnits) const { return static_cast<float>(fontUnits) / static_cast<float>(unitsPerEm); }

    FT_Face Drawn() const { return drawn.get(); }
    hb_font_t* Shaped() const { return shaped.get(); }

private:
    FontFace(FT_Face opened, hb_blob_t* blob, int index);

    std::unique_ptr<FT_FaceRec_, Release<FT_Done_Face>> drawn;
    std::unique_ptr<hb_font_t, Release<hb_font_destroy>> shaped;
    int unitsPerEm;
};

}  // namespace gui
