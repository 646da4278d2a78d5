#include "gui/Bitmap.h"
#include "gui/Gradient.h"
#include "gui/PixelRows.h"

namespace gui {

namespace {

/// Where a bitmap's own top left comes to lie on the target, device pixels. It doesn't depend on how much of
/// the top left a clip has cut off, so that parts drawn one by one fit together.
BasicPoint<int> Placement(const Rect& destination, Point source, float scale)
{
    const Point origin = destination.Origin() - source;
    return {ToDevice(origin.x, scale), ToDevice(origin.y, scale)};
}

DeviceRect Covered(BasicPoint<int> placement, const IBitmap& bitmap)
{
    return DeviceRect::At(placement, bitmap.GetSize());
}

const std::uint32_t* SourceRow(const IBitmap& bitmap, BasicPoint<int> placement, const DeviceRect& rect,
                               int y)
{
    return bitmap.GetPixels() +
           static_cast<std::ptrdiff_t>(y - placement.y) * static_cast<std::ptrdiff_t>(bitmap.GetSize().x) +
           (rect.left - placement.x);
}

}  // namespace

DeviceRect Bitmap::ToTarget(const Rect& rect) const noexcept
{
    return ToDevice(rect, backing->Scale()).Intersected(clipRect);
}

void Bitmap::DrawBitmap(const IBitmap& bitmap, const Rect& destination, Point source, int alpha)
{
    const BasicPoint<int> placement = Placement(destination, source, backing->Scale());
    const DeviceRect rect = ToTarget(destination).Intersected(Covered(placement, bitmap));
    if (rect.IsEmpty() || alpha <= 0)
        return;
    for (int y = rect.top; y < rect.bottom; ++y)
        BlendRow(PixelAt(rect.left, y), SourceRow(bitmap, placement, rect, y), rect.Width(), alpha);
    MarkDirty(rect);
}

void Bitmap::DrawMaskedBitmap(const IBitmap& bitmap, const Rect& destination, Point source,
                              const IBitmap& mask, Point maskSource, int alpha)
{
    const BasicPoint<int> placement = Placement(destination, source, backing->Scale());
    const BasicPoint<int> maskPlacement = Placement(destination, maskSource, backing->Scale());
    const DeviceRect rect = ToTarget(destination)
                                .Intersected(Covered(placement, bitmap))
                                .Intersected(Covered(maskPlacement, mask));
    if (rect.IsEmpty() || alpha <= 0)
        return;
    for (int y = rect.top; y < rect.bottom; ++y)
        BlendMaskedRow(PixelAt(rect.left, y), SourceRow(bitmap, placement, rect, y),
                       SourceRow(mask, maskPlacement, rect, y), rect.Width(), alpha);
    MarkDirty(rect);
}

void Bitmap::FillRect(const Rect& rect, gui::Color color)
{
    const DeviceRect filled = ToTarget(rect);
    if (filled.IsEmpty() || color.a == 0)
        return;
    const std::uint32_t pixel = ToPixel(color);
    for (int y = filled.top; y < filled.bottom; ++y)
        BlendPixel(PixelAt(filled.left, y), pixel, filled.Width());
    MarkDirty(filled);
}

void Bitmap::FillGradient(const IGradient& gradient, const Rect& rect, Direction direction, float start,
                          float end, int alpha)
{
    if (alpha < 255)
        return FillGradient(FadedGradient(gradient, alpha), rect, direction, start, end, 255);
    const DeviceRect filled = ToTarget(rect);
    if (filled.IsEmpty() || gradient.GetStopCount() == 0)
        return;
    const float scale = backing->Scale();
    const float length = (end - start) * scale;
    // Read at the pixel's middle. Without any length all lies behind the end.
    const auto pixelAt = [&](int place) {
        const float from = static_cast<float>(place) + 0.5f - start * scale;
        return ToPixel(gradient.GetColorAt(length != 0.0f ? from / length : 1.0f));
    };
    if (IsHorizontal(direction)) {
        std::vector<std::uint32_t> row(static_cast<std::size_t>(filled.Width()));
        for (int x = filled.left; x < filled.right; ++x)
            row[static_cast<std::size_t>(x - filled.left)] = pixelAt(x);
        for (int y = filled.top; y < filled.bottom; ++y)
            BlendRow(PixelAt(filled.left, y), row.data(), filled.Width(), 255);
    } else {
        for (int y = filled.top; y < filled.bottom; ++y)
            BlendPixel(PixelAt(filled.left, y), pixelAt(y), filled.Width());
    }
    MarkDirty(filled);
}

gui::Color Bitmap::GetPixel(Point point) const
{
    const int x = ToDevice(point.x, backing->Scale());
    const int y = ToDevice(point.y, backing->Scale());
    if (!clipRect.Contains({x, y}))
        return {};
    return FromPixel(pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(deviceSize.x) +
                            static_cast<std::size_t>(x)]);
}

void Bitmap::SetPixel(Point point, gui::Color color)
{
    const int x = ToDevice(point.x, backing->Scale());
    const int y = ToDevice(point.y, backing->Scale());
    if (!clipRect.Contains({x, y}))
        return;
    BlendPixel(PixelAt(x, y), ToPixel(color), 1);
    MarkDirty({x, y, x + 1, y + 1});
}

}  // namespace gui
