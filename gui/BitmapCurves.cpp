#include "gui/Bitmap.h"
#include "gui/CurveBand.h"
#include "gui/EdgeCoverage.h"
#include "gui/PixelRows.h"

#include <array>
#include <cmath>

namespace gui {

namespace {

constexpr int shadeCount = 256;

/// The pixels between two colours. Premultiplied ones are mixed, so that a colour that fades to nothing keeps
/// its tone.
class Shades {
public:
    Shades(Color from, Color to)
    {
        const FloatColor start = Premultiplied(from);
        const FloatColor difference = Premultiplied(to) - start;
        for (int i = 0; i <= shadeCount; ++i)
            pixels[static_cast<std::size_t>(i)] =
                Packed(start + difference * (static_cast<float>(i) / shadeCount));
    }
    /// @param share  0..1, the way from the one to the other; clamped
    std::uint32_t At(float share) const noexcept
    {
        return pixels[static_cast<std::size_t>(std::clamp(share, 0.0f, 1.0f) * shadeCount + 0.5f)];
    }

private:
    static FloatColor Premultiplied(Color color)
    {
        const FloatColor precise = ToPrecise(color);
        const float share = precise.a / 255.0f;
        return {precise.r * share, precise.g * share, precise.b * share, precise.a};
    }
    static std::uint32_t Packed(FloatColor premultiplied)
    {
        const Color bytes = FromPrecise(premultiplied);
        return (255u - bytes.a) << 24 | static_cast<std::uint32_t>(bytes.r) << 16 |
               static_cast<std::uint32_t>(bytes.g) << 8 | bytes.b;
    }

    std::array<std::uint32_t, shadeCount + 1> pixels;
};

/// A curve's heights in device pixels at the left edges of columns, from some columns left of the drawn area
/// to as many right of it.
class SampledCurve {
public:
    SampledCurve(const CurveStyle::Layer& layer, const DeviceRect& area, int margin, Point origin,
                 float scale)
        : first(area.left - margin)
    {
        constexpr float farAway = 1e5f;  // beyond any window, and still with pixels exact
        for (int x = first; x <= area.right + margin; ++x) {
            const float height =
                (origin.y + layer.curve->ValueAt(static_cast<float>(x) / scale - origin.x)) * scale;
            heights.push_back(height > -farAway ? std::min(height, farAway) : -farAway);
        }
    }
    float At(int x) const { return heights[static_cast<std::size_t>(x - first)]; }
    /// From the left edge of `area` to its right edge.
    std::span<const float> Within(const DeviceRect& area) const
    {
        return std::span(heights).subspan(static_cast<std::size_t>(area.left - first),
                                          static_cast<std::size_t>(area.Width()) + 1);
    }

private:
    int first;
    std::vector<float> heights;
};

/// One column of a filled layer.
struct FilledColumn {
    float edge;                   // the curve in the column's middle
    float slope;                  // of the curve over the column
    float solidTop, solidBottom;  // whole pixels between these are covered
    float top, bottom;            // others beyond these are not
    float perPixel;               // of the way from the curve to the baseline
};

FilledColumn MakeColumn(float left, float right, float baseline)
{
    const float edge = 0.5f * (left + right);
    const float high = std::min(left, right);
    const float low = std::max(left, right);
    const float length = baseline - edge;
    const bool above = edge < baseline;
    return {edge,
            right - left,
            above ? low : baseline,
            above ? baseline : high,
            std::min(high, baseline),
            std::max(low, baseline),
            std::abs(length) > 0.001f ? 1.0f / length : 0.0f};
}

std::uint32_t FilledPixel(const FilledColumn& column, float y, float baseline, const Shades& shades)
{
    if (y + 1.0f <= column.top || y >= column.bottom)
        return transparentPixel;
    const std::uint32_t pixel = shades.At((y + 0.5f - column.edge) * column.perPixel);
    if (y >= column.solidTop && y + 1.0f <= column.solidBottom)
        return pixel;
    const float cover = std::abs(AreaBeyond(y, column.edge, column.slope) - AreaBeyond(y, baseline, 0.0f));
    return FadedPixel(pixel, ToCoverage(cover));
}

/// How much of each pixel of an area a stroke covers.
class StrokeCoverage {
public:
    StrokeCoverage(const DeviceRect& strokedArea, float strokeWidth)
        : area(strokedArea),
          half(0.5f * strokeWidth),
          most(std::min(strokeWidth, 1.0f)),
          coverage(static_cast<std::size_t>(area.Area()))
    {}

    /// A piece from (x, y0) to (x + 1, y1) with round ends. Pieces that meet cover their joint once.
    void AddPiece(int x, float y0, float y1)
    {
        const float reach = half + 0.5f;
        const int top = std::max(area.top, Floor(std::min(y0, y1) - reach));
        const int bottom = std::min(area.bottom, Floor(std::max(y0, y1) + reach) + 1);
        const int left = std::max(area.left, Floor(static_cast<float>(x) - reach));
        const int right = std::min(area.right, Floor(static_cast<float>(x) + 1.0f + reach) + 1);
        const float rise = y1 - y0;
        const float perLength = 1.0f / (1.0f + rise * rise);
        for (int row = top; row < bottom; ++row) {
            std::uint8_t* covered = Row(row) - area.left;
            const float dy = static_cast<float>(row) + 0.5f - y0;
            for (int column = left; column < right; ++column) {
                const float dx = static_cast<float>(column - x) + 0.5f;
                const float along = std::clamp((dx + dy * rise) * perLength, 0.0f, 1.0f);
                const float ex = dx - along;
                const float ey = dy - along * rise;
                const float square = ex * ex + ey * ey;
                if (square >= reach * reach)
                    continue;
                const auto cover =
                    static_cast<std::uint8_t>(ToCoverage(std::min(reach - std::sqrt(square), most)));
                covered[column] = std::max(covered[column], cover);
            }
        }
    }
    std::uint8_t* Row(int y)
    {
        return coverage.data() +
               static_cast<std::ptrdiff_t>(y - area.top) * static_cast<std::ptrdiff_t>(area.Width());
    }

private:
    static int Floor(float x) { return static_cast<int>(std::floor(x)); }

    DeviceRect area;
    float half;
    float most;  // a line thinner than a pixel covers none wholly
    std::vector<std::uint8_t> coverage;
};

/// The rows of `area` that a curve's line can touch.
DeviceRect StrokedArea(const SampledCurve& curve, const DeviceRect& area, int margin)
{
    float top = curve.At(area.left);
    float bottom = top;
    for (int x = area.left - margin; x <= area.right + margin; ++x) {
        top = std::min(top, curve.At(x));
        bottom = std::max(bottom, curve.At(x));
    }
    const auto edge = static_cast<float>(margin);
    return area.Intersected({area.left, static_cast<int>(std::floor(top - edge)), area.right,
                             static_cast<int>(std::ceil(bottom + edge))});
}

}  // namespace

void Bitmap::DrawCurves(const CurveStyle& style, const Rect& rect, const Rect& clip, Point origin, int flags,
                        int alpha)
{
    const DeviceRect area = ToTarget(rect).Intersected(ToTarget(clip));
    if (area.IsEmpty())
        return;
    const float scale = backing->Scale();
    const float width = style.lineWidth * scale;
    const int margin = static_cast<int>(std::ceil(0.5f * width)) + 1;
    const gui::Color line = style.lineColor.Faded(alpha);
    for (const CurveStyle::Layer& layer : style.layers) {
        const SampledCurve curve(layer, area, margin, origin, scale);
        const std::span<const float> heights = curve.Within(area);
        const float baseline = (origin.y + layer.baseline) * scale;
        FillBelowCurve(area, heights, baseline, layer.fillAtCurve.Faded(alpha),
                       layer.fillAtBaseline.Faded(alpha));
        FillBelowCurve(area, heights, baseline, style.fillColor.Faded(alpha), style.fillColor.Faded(alpha));
        const DeviceRect stroked = StrokedArea(curve, area, margin);
        if (flags != 0 || line.a == 0 || width <= 0.0f || stroked.IsEmpty())
            continue;
        StrokeCoverage coverage(stroked, width);
        for (int x = area.left - margin; x < area.right + margin; ++x)
            coverage.AddPiece(x, curve.At(x), curve.At(x + 1));
        for (int y = stroked.top; y < stroked.bottom; ++y)
            BlendCoverage(PixelAt(stroked.left, y), ToPixel(line), coverage.Row(y), stroked.Width());
    }
    MarkDirty(area);
}

void Bitmap::FillBelowCurve(const DeviceRect& area, std::span<const float> heights, float baseline,
                            gui::Color atCurve, gui::Color atBaseline)
{
    if (atCurve.a == 0 && atBaseline.a == 0)
        return;
    const Shades shades(atCurve, atBaseline);
    std::vector<FilledColumn> columns;
    float top = baseline;
    float bottom = baseline;
    for (std::size_t i = 0; i + 1 < heights.size(); ++i) {
        columns.push_back(MakeColumn(heights[i], heights[i + 1], baseline));
        top = std::min(top, columns.back().top);
        bottom = std::max(bottom, columns.back().bottom);
    }
    const int firstRow = std::max(area.top, static_cast<int>(std::floor(std::max(top, -1e6f))));
    const int endRow = std::min(area.bottom, static_cast<int>(std::ceil(std::min(bottom, 1e6f))));
    std::vector<std::uint32_t> row(columns.size());
    for (int y = firstRow; y < endRow; ++y) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            row[i] = FilledPixel(columns[i], static_cast<float>(y), baseline, shades);
        BlendRow(PixelAt(area.left, y), row.data(), area.Width(), 255);
    }
}

void Bitmap::DrawCurveBand(BandMode mode, const ICurve& curve, const Rect& clip, const Rect& band,
                           Point origin, gui::Color top, gui::Color bottom, float innerFraction)
{
    const DeviceRect area = ToTarget(clip);
    if (area.IsEmpty())
        return;
    const float scale = backing->Scale();
    const float middle = band.Middle().y * scale;
    const float half = 0.5f * band.Height() * scale;
    const std::vector<BandColumn> columns = BandColumns(curve, area.left, area.right, origin.x, scale);
    const bool inMiddle = mode == BandMode::Middle;
    const Shades shades(top, inMiddle ? top.WithAlpha(0) : bottom);
    const int firstRow = std::max(area.top, static_cast<int>(std::floor(middle - half)));
    const int endRow = std::min(area.bottom, static_cast<int>(std::ceil(middle + half)));

    std::vector<float> values;
    for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
        const BandColumn& from = columns[i];
        const BandColumn& to = columns[i + 1];
        for (int x = from.x; x < to.x; ++x)
            values.push_back(from.value + (to.value - from.value) * (static_cast<float>(x - from.x) + 0.5f) /
                                              static_cast<float>(to.x - from.x));
    }
    std::vector<std::uint32_t> row(static_cast<std::size_t>(area.Width()));
    for (int y = firstRow; y < endRow; ++y) {
        const float place = static_cast<float>(y) + 0.5f - middle;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const float lit = ((1.0f - innerFraction) * values[i] + innerFraction) * half;
            const float share =
                inMiddle ? std::abs(place) / std::max(lit, 0.001f) : 0.5f + 0.5f * place / half;
            row[i] = FadedPixel(shades.At(share), ToCoverage(values[i]));
        }
        BlendRow(PixelAt(area.left, y), row.data(), area.Width(), 255);
    }
    MarkDirty(area);
}

}  // namespace gui
