#pragma once

#include "platform/FontLibrary.h"

#include <string_view>
#include <vector>

namespace gui {

/// A glyph at its place on a line, ems from the line's start and baseline; y grows downwards.
struct PlacedGlyph {
    const FontFace* face;
    unsigned index;
    float x;
    float y;
};

struct ShapedLine {
    std::vector<PlacedGlyph> glyphs;
    float advance = 0.0f;  // ems
};

/// Finds fonts and places for the glyphs of a line, with kerning, in the order in which they are shown.
/// Characters that the font lacks come from the system's fonts. Thread: with the library's mutex held.
class TextShaper {
public:
    TextShaper(FontLibrary& fontLibrary, const FontFace& fontFace, bool isBold)
        : library(fontLibrary), face(fontFace), bold(isBold)
    {}

    /// @param text  UTF-8; what isn't shows as U+FFFD, control characters as spaces
    ShapedLine Shape(std::string_view text) const;

private:
    const FontFace& FaceOf(char32_t character, const FontFace& previous) const;
    void AppendDirected(ShapedLine& line, std::u32string_view run, bool rightToLeft) const;
    void AppendRun(ShapedLine& line, std::u32string_view run, const FontFace& runFace,
                   bool rightToLeft) const;

    FontLibrary& library;
    const FontFace& face;
    bool bold;
};

/// The bytes of the first character of `text`, at least 1 unless that is empty; a wrong byte counts as one.
std::size_t CharacterLength(std::string_view text);

}  // namespace gui
