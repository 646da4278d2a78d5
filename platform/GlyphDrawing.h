#pragma once

#include "gui/Geometry.h"
#include "platform/TextShaper.h"

#include <cstdint>
#include <vector>

namespace gui {

/// A glyph that brings its own colours, in the size it is shown at.
struct GlyphPicture {
    BasicPoint<int> place;  // of its top left, device pixels
    BasicPoint<int> size;
    std::vector<std::uint32_t> pixels;  // as of a bitmap
};

/// How much of each pixel the letters of a text cover, 0..255, and the pictures among them.
class GlyphCoverage {
public:
    GlyphCoverage(int coverageWidth, int coverageHeight)
        : width(coverageWidth),
          height(coverageHeight),
          coverage(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {}

    /// @param x         where the line starts, device pixels
    /// @param baseline  device pixels from the top
    void AddLine(const ShapedLine& line, float pixelsPerEm, bool slanted, int x, int baseline);
    void AddRect(const DeviceRect& rect);
    std::uint8_t At(int x, int y) const { return coverage[Place(x, y)]; }
    /// Lays the pictures over `pixels` of this size, faded by `alpha`, 0..255.
    void DrawPictures(std::uint32_t* pixels, int alpha) const;

private:
    std::size_t Place(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    void AddOutline(const PlacedGlyph& glyph, float pixelsPerEm, bool slanted, int x, int baseline);
    void AddPicture(const PlacedGlyph& glyph, float pixelsPerEm, int x, int baseline);
    void AddCovered(int x, int y, int cover);
    void AddBitmap(const FT_Bitmap& bitmap, int left, int top);

    int width;
    int height;
    std::vector<std::uint8_t> coverage;
    std::vector<GlyphPicture> pictures;
};

/// The pixels from the line's start that its letters reach to, left and right.
struct InkExtent {
    float left;
    float right;
};
InkExtent InkOf(const ShapedLine& line, float pixelsPerEm, bool slanted);

}  // namespace gui
