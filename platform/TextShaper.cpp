#include "platform/TextShaper.h"

#include "platform/TextDirection.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>

namespace gui {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// The length that a character's first byte announces; 0 if none begins so.
std::size_t AnnouncedLength(unsigned char byte)
{
    if (byte < 0x80)
        return 1;
    if (byte >= 0xC2 && byte < 0xE0)
        return 2;
    if (byte >= 0xE0 && byte < 0xF0)
        return 3;
    return byte >= 0xF0 && byte < 0xF5 ? 4 : 0;
}

char32_t Decode(std::string_view bytes)
{
    const auto first = static_cast<unsigned char>(bytes.front());
    if (bytes.size() == 1)
        return first < 0x80 ? first : replacement;
    char32_t character = first & (0x7Fu >> bytes.size());
    for (const char byte : bytes.substr(1))
        character = character << 6 | (static_cast<unsigned char>(byte) & 0x3F);
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    return character < least[bytes.size()] || character > 0x10FFFF || isSurrogate ? replacement : character;
}

std::u32string Decoded(std::string_view text)
{
    std::u32string characters;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const char32_t character = Decode(text.substr(0, length));
        characters += character < 0x20 || character == 0x7F ? U' ' : character;
        text.remove_prefix(length);
    }
    return characters;
}

/// What belongs to the character before it: combining marks, joiners, marks of direction, selectors of
/// variants and tones.
bool IsAttached(char32_t character)
{
    return (character >= 0x300 && character < 0x370) || (character >= 0x200C && character < 0x2010) ||
           (character >= 0x20D0 && character < 0x2100) || (character >= 0xFE00 && character < 0xFE10) ||
           (character >= 0x1F3FB && character < 0x1F400);
}

}  // namespace

std::size_t CharacterLength(std::string_view text)
{
    if (text.empty())
        return 0;
    const std::size_t announced = AnnouncedLength(static_cast<unsigned char>(text.front()));
    if (announced == 0 || announced > text.size() ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(announced), IsContinuation))
        return 1;
    return announced;
}

ShapedLine TextShaper::Shape(std::string_view text) const
{
    ShapedLine line;
    const std::u32string characters = Decoded(text);
    for (const DirectedRun& run : VisualRuns(characters))
        AppendDirected(line, std::u32string_view(characters).substr(run.start, run.length), run.rightToLeft);
    return line;
}

void TextShaper::AppendDirected(ShapedLine& line, std::u32string_view run, bool rightToLeft) const
{
    struct Piece {
        std::u32string_view text;
        const FontFace* face;
    };
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < run.size(); ++i) {
        const FontFace* found = &FaceOf(run[i], pieces.empty() ? face : *pieces.back().face);
        if (pieces.empty() || pieces.back().face != found)
            pieces.push_back({run.substr(i, 0), found});
        pieces.back().text = {pieces.back().text.data(), pieces.back().text.size() + 1};
    }
    if (rightToLeft)
        std::reverse(pieces.begin(), pieces.end());
    for (const Piece& piece : pieces)
        AppendRun(line, piece.text, *piece.face, rightToLeft);
}

const FontFace& TextShaper::FaceOf(char32_t character, const FontFace& previous) const
{
    if (IsAttached(character) || (character == U' ' && previous.HasGlyph(character)))
        return previous;
    if (face.HasGlyph(character))
        return face;
    const FontFace* found = library.FaceWith(character, bold);
    return found ? *found : face;
}

void TextShaper::AppendRun(ShapedLine& line, std::u32string_view run, const FontFace& runFace,
                           bool rightToLeft) const
{
    const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                            hb_buffer_destroy);
    const int length = static_cast<int>(run.size());
    hb_buffer_add_utf32(buffer.get(), reinterpret_cast<const std::uint32_t*>(run.data()), length, 0, length);
    hb_buffer_set_direction(buffer.get(), rightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_guess_segment_properties(buffer.get());
    // Texts are shown as they are written: "->" is no arrow, and 2x4 no product.
    const hb_feature_t literal{HB_TAG('c', 'a', 'l', 't'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    hb_shape(runFace.Shaped(), buffer.get(), &literal, 1);

    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
    for (unsigned i = 0; i < count; ++i) {
        line.glyphs.push_back({&runFace, infos[i].codepoint,
                               line.advance + runFace.Ems(positions[i].x_offset),
                               -runFace.Ems(positions[i].y_offset)});
        line.advance += runFace.Ems(positions[i].x_advance);
    }
}

}  // namespace gui
