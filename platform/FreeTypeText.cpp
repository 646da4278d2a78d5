#include "platform/FreeTypeText.h"

#include "platform/GlyphDrawing.h"
#include "platform/TextLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>

namespace gui {

namespace {

int Rounded(float x) { return static_cast<int>(std::lround(x)); }
int RoundedUp(float x) { return static_cast<int>(std::ceil(x - geometryTolerance)); }

/// What covers `coverage` of a pixel for letters of `color`. Canvases mix what the screen is sent, not light:
/// half a dark letter on a light ground comes out too dark, half a light one on a dark ground too dark as
/// well. So dark letters are thinned and light ones thickened, against a ground taken to be as light as the
/// letters are dark. Mixing light itself would make dark letters too thin for the eye; the exponent is a
/// usual one below the screen's 2.2.
std::array<std::uint8_t, 256> WeightTable(Color color)
{
    constexpr float exponent = 1.0f / 1.4f;
    const auto lightness = (0.2126f * static_cast<float>(color.r) + 0.7152f * static_cast<float>(color.g) +
                            0.0722f * static_cast<float>(color.b)) /
                           255.0f;
    std::array<std::uint8_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const float cover = static_cast<float>(i) / 255.0f;
        const float dark = 1.0f - std::pow(1.0f - cover, exponent);
        const float light = std::pow(cover, exponent);
        table[i] = static_cast<std::uint8_t>((dark + (light - dark) * lightness) * 255.0f + 0.5f);
    }
    return table;
}

}  // namespace

FreeTypeText::FreeTypeText(DeviceBacking& deviceBacking) : Text(deviceBacking), fonts(FontLibrary::Get()) {}

float FreeTypeText::PixelsPerEm() const
{
    constexpr float pointsPerInch = 72.0f;
    return Size.value() * std::floor(backing.Scale() * 96.0f + 0.7f) / pointsPerInch;
}

const Bitmap& FreeTypeText::GetBitmap()
{
    if (cacheState == CacheState::Stale)
        Measure();
    if (cacheState == CacheState::Measured)
        Render();
    return bitmap;
}

float FreeTypeText::GetWidth()
{
    if (cacheState == CacheState::Stale)
        Measure();
    return static_cast<float>(width) / backing.Scale();
}

float FreeTypeText::GetHeight()
{
    if (cacheState == CacheState::Stale)
        Measure();
    return static_cast<float>(lineHeight * static_cast<int>(lines.size())) / backing.Scale();
}

float FreeTypeText::GetBaselineShift()
{
    if (cacheState == CacheState::Stale)
        Measure();
    // From the middle of the capitals to the middle of the box.
    const float capitals = static_cast<float>(ascent) - 0.5f * capHeight;
    const float box = 0.5f * static_cast<float>(lineHeight);
    return static_cast<float>(Rounded(box - capitals)) / backing.Scale();
}

void FreeTypeText::Measure()
{
    const std::lock_guard lock(fonts->Mutex());
    const FontFace& face = fonts->Face(FontName.value(), Bold.value());
    const float pixels = PixelsPerEm();
    const int limit = ToDevice(MaxWidth.value(), backing.Scale());
    BreakLines(TextShaper(*fonts, face, Bold.value()), static_cast<float>(limit) / pixels);

    InkExtent ink{0.0f, 0.0f};
    for (const ShapedLine& line : lines) {
        const InkExtent lineInk = InkOf(line, pixels, Italic.value());
        ink.left = std::min(ink.left, lineInk.left);
        ink.right = std::max({ink.right, lineInk.right, line.advance * pixels});
    }
    overhang = RoundedUp(-ink.left);
    width = overhang + RoundedUp(ink.right);
    if (MaxWidth.value() > 0.0f)
        width = std::min(width, limit);
    ascent = Rounded(face.Ascent() * pixels);
    lineHeight = ascent + Rounded(face.Descent() * pixels);
    capHeight = face.CapHeight() * pixels;
    cacheState = CacheState::Measured;
}

void FreeTypeText::BreakLines(const TextShaper& shaper, float limit)
{
    const FitsLine fits = [&](std::string_view text) { return shaper.Shape(text).advance <= limit; };
    std::vector<std::string> texts;
    switch (EffectiveStyle()) {
    case LineStyle::Single:
        texts = {String.value()};
        break;
    case LineStyle::Ellipsis:
        texts = {CutWithEllipsis(String.value(), fits)};
        break;
    case LineStyle::Wrapped:
        texts = WrapWords(String.value(), fits);
        break;
    }
    lines.clear();
    for (const std::string& text : texts)
        lines.push_back(shaper.Shape(text));
}

int FreeTypeText::StartOf(const ShapedLine& line) const
{
    // By the advance rather than the ink, or lines that end in different letters would stand unevenly.
    const int room = std::max(width - overhang - RoundedUp(line.advance * PixelsPerEm()), 0);
    switch (Alignment.value()) {
    case gui::Alignment::Left:
        break;
    case gui::Alignment::Centre:
        return overhang + room / 2;
    case gui::Alignment::Right:
        return overhang + room;
    }
    return overhang;
}

DeviceRect FreeTypeText::UnderlineOf(const ShapedLine& line, const FontFace& face, int start,
                                     int baseline) const
{
    const float pixels = PixelsPerEm();
    const int thickness = std::max(Rounded(face.UnderlineThickness() * pixels), 1);
    const float middle = face.UnderlineDepth() * pixels;
    const int below = std::max(Rounded(middle - 0.5f * static_cast<float>(thickness)), 1);
    const int top = std::min(baseline + below, baseline - ascent + lineHeight - thickness);
    return {start, top, start + Rounded(line.advance * pixels), top + thickness};
}

void FreeTypeText::Render()
{
    const std::lock_guard lock(fonts->Mutex());
    const FontFace& face = fonts->Face(FontName.value(), Bold.value());
    const float pixels = PixelsPerEm();
    const int height = lineHeight * static_cast<int>(lines.size());
    GlyphCoverage coverage(width, height);
    int baseline = ascent;
    for (const ShapedLine& line : lines) {
        const int start = StartOf(line);
        coverage.AddLine(line, pixels, Italic.value(), start, baseline);
        if (Underline.value())
            coverage.AddRect(UnderlineOf(line, face, start, baseline));
        baseline += lineHeight;
    }

    // Black on white; `Colorize` turns what is dark into alpha.
    const std::array<std::uint8_t, 256> weights = WeightTable(Color.value());
    bitmap.SetSourceSize(width, height);
    std::uint32_t* pixel = bitmap.Pixels();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            *pixel++ = 0x010101u * (255u - weights[coverage.At(x, y)]);
    }
    bitmap.Colorize(Color.value());
    coverage.DrawPictures(bitmap.Pixels(), Color.value().a);
    cacheState = CacheState::Rendered;
}

}  // namespace gui
