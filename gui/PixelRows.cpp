#include "gui/PixelRows.h"

#include "foundation/Pixel4.h"

#include <algorithm>
#include <cstring>

namespace gui {

namespace {

/// A pixel whose alpha is `alpha`: what others are faded by.
std::uint32_t Factor(int alpha) noexcept { return (255u - static_cast<std::uint32_t>(alpha)) << 24; }

void Lay(Pixel4 pixels, std::uint32_t* row) noexcept
{
    if (pixels.allTransparent())
        return;
    (pixels.allOpaque() ? pixels : pixels.over(Pixel4::load(row))).store(row);
}

/// Calls `blend(row, place)` for each four pixels, the last ones of which may stand in a buffer that is
/// copied back.
template <class F>
void ForEachFour(std::uint32_t* row, int count, F blend) noexcept
{
    int i = 0;
    for (; i + Pixel4::width <= count; i += Pixel4::width)
        blend(row + i, i, Pixel4::width);
    if (i == count)
        return;
    std::uint32_t last[Pixel4::width] = {};
    const auto bytes = static_cast<std::size_t>(count - i) * sizeof *row;
    std::memcpy(last, row + i, bytes);
    blend(last, i, count - i);
    std::memcpy(row + i, last, bytes);
}

/// `count` pixels, 1..4; behind them transparent ones.
Pixel4 LoadSome(const std::uint32_t* from, int count) noexcept
{
    if (count == Pixel4::width)
        return Pixel4::load(from);
    std::uint32_t some[Pixel4::width];
    std::fill(std::copy(from, from + count, some), some + Pixel4::width, Pixel4::transparent);
    return Pixel4::load(some);
}

}  // namespace

void BlendRow(std::uint32_t* row, const std::uint32_t* source, int count, int alpha) noexcept
{
    if (alpha == 255) {
        ForEachFour(row, count,
                    [source](std::uint32_t* to, int i, int some) { Lay(LoadSome(source + i, some), to); });
        return;
    }
    const Pixel4 factor(Factor(alpha));
    ForEachFour(row, count, [source, factor](std::uint32_t* to, int i, int some) {
        const Pixel4 pixels = LoadSome(source + i, some);
        if (!pixels.allTransparent())
            pixels.timesAlphaOf(factor).over(Pixel4::load(to)).store(to);
    });
}

void BlendMaskedRow(std::uint32_t* row, const std::uint32_t* source, const std::uint32_t* mask, int count,
                    int alpha) noexcept
{
    const Pixel4 factor(Factor(alpha));
    ForEachFour(row, count, [source, mask, factor](std::uint32_t* to, int i, int some) {
        const Pixel4 cover = LoadSome(mask + i, some);
        if (!cover.allTransparent())
            LoadSome(source + i, some)
                .timesAlphaOf(cover)
                .timesAlphaOf(factor)
                .over(Pixel4::load(to))
                .store(to);
    });
}

void BlendPixel(std::uint32_t* row, std::uint32_t pixel, int count) noexcept
{
    if (pixel >> 24 == 0) {
        std::fill_n(row, count, pixel);
        return;
    }
    if (pixel == Pixel4::transparent)
        return;
    const Pixel4 pixels(pixel);
    ForEachFour(row, count,
                [pixels](std::uint32_t* to, int, int) { pixels.over(Pixel4::load(to)).store(to); });
}

void BlendCoverage(std::uint32_t* row, std::uint32_t pixel, const std::uint8_t* coverage, int count) noexcept
{
    const Pixel4 pixels(pixel);
    ForEachFour(row, count, [pixels, coverage](std::uint32_t* to, int i, int some) {
        std::uint32_t factors[Pixel4::width];
        for (int k = 0; k < Pixel4::width; ++k)
            factors[k] = Factor(k < some ? coverage[i + k] : 0);
        const Pixel4 cover = Pixel4::load(factors);
        if (!cover.allTransparent())
            Lay(pixels.timesAlphaOf(cover), to);
    });
}

std::uint32_t FadedPixel(std::uint32_t pixel, int alpha) noexcept
{
    std::uint32_t result[Pixel4::width];
    Pixel4(pixel).timesAlphaOf(Pixel4(Factor(alpha))).store(result);
    return result[0];
}

}  // namespace gui
