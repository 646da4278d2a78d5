#pragma once

#include "gui/Geometry.h"
#include "platform/TextShaper.h"

#include <cstdint>
#include <vector>

namespace gui {

/// How much of each pixel the letters of a text cover, 0..255.
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

private:
    std::size_t Place(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    void AddBitmap(const FT_Bitmap& bitmap, int left, int top);

    int width;
    int height;
    std::vector<std::uint8_t> coverage;
};

/// The pixels from the line's start that its letters reach to, left and right.
struct InkExtent {
    float left;
    float right;
};
InkExtent InkOf(const ShapedLine& line, float pixelsPerEm, bool slanted);

}  // namespace gui
