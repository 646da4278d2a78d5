#include "gui/Bitmap.h"
#include "gui/EdgeCoverage.h"
#include "gui/PixelRows.h"

#include <cmath>

namespace gui {

namespace {

/// A line seen along its longer axis, in device pixels. A whole coordinate is a pixel's middle, so a line
/// from pixel to pixel covers both of them.
struct ScannedLine {
    ScannedLine(Point from, Point to, float width)
    {
        steep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
        if (steep) {
            std::swap(from.x, from.y);
            std::swap(to.x, to.y);
        }
        if (from.x > to.x)
            std::swap(from, to);
        start = from.x;
        end = to.x + 1.0f;
        slope = (to.y - from.y) / (to.x - from.x);
        thickness = width * std::sqrt(1.0f + slope * slope);
        middle = from.y + 0.5f - slope * (from.x + 0.5f);
        if (std::abs(to.y - from.y) < 0.01f)
            AlignToPixels(from.y + 0.5f);
    }

    float MiddleAt(int step) const { return middle + slope * (static_cast<float>(step) + 0.5f); }
    float ShareOf(int step) const
    {
        const auto left = static_cast<float>(step);
        return std::min(end, left + 1.0f) - std::max(start, left);
    }

    bool steep;
    float start, end;  // along the axis
    float slope;
    float thickness;  // across the axis
    float middle;     // across the axis at 0

private:
    /// A level line covers whole pixels, or it would be a blurred one where the scale is even.
    void AlignToPixels(float level)
    {
        slope = 0.0f;
        if (thickness >= 1.0f)
            thickness = std::floor(thickness + 0.5f);
        const float edge =
            thickness >= 1.0f ? std::floor(level - 0.5f * thickness + 0.5f) : std::floor(level);
        middle = edge + 0.5f * thickness;
    }
};

}  // namespace

void Bitmap::DrawLine(Point from, Point to, const Rect& clip, gui::Color color, float width)
{
    constexpr float least = 0.01f;  // device pixels
    const float scale = backing->Scale();
    const DeviceRect area = ToTarget(clip);
    from = from * scale;
    to = to * scale;
    const bool isPoint = std::abs(to.x - from.x) < least && std::abs(to.y - from.y) < least;
    if (isPoint || area.IsEmpty() || color.a == 0)
        return;
    const ScannedLine line(from, to, width * scale);
    const std::uint32_t pixel = ToPixel(color);
    const float half = 0.5f * line.thickness;
    const float reach = half + 0.5f * std::abs(line.slope);
    const int first = std::max(static_cast<int>(std::floor(std::max(line.start, -1e6f))),
                               line.steep ? area.top : area.left);
    const int last = std::min(static_cast<int>(std::ceil(std::min(line.end, 1e6f))),
                              line.steep ? area.bottom : area.right);
    DeviceRect drawn;
    for (int step = first; step < last; ++step) {
        const float middle = std::clamp(line.MiddleAt(step), -1e6f, 1e6f);
        const int low =
            std::max(static_cast<int>(std::floor(middle - reach)), line.steep ? area.left : area.top);
        const int high =
            std::min(static_cast<int>(std::ceil(middle + reach)), line.steep ? area.right : area.bottom);
        for (int across = low; across < high; ++across) {
            const auto place = static_cast<float>(across);
            const float cover =
                AreaBeyond(place, middle - half, line.slope) - AreaBeyond(place, middle + half, line.slope);
            const int alpha = ToCoverage(cover * line.ShareOf(step));
            BlendPixel(line.steep ? PixelAt(across, step) : PixelAt(step, across), FadedPixel(pixel, alpha),
                       1);
        }
        if (low < high)
            drawn = drawn.United(line.steep ? DeviceRect{low, step, high, step + 1}
                                            : DeviceRect{step, low, step + 1, high});
    }
    MarkDirty(drawn);
}

}  // namespace gui
