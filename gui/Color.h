#pragma once

#include <cstdint>

namespace gui {

/// The product of two alpha values, 0..255, rounded: the one rule wherever alphas meet.
constexpr int AlphaProduct(int a, int b) noexcept
{
    const int p = a * b + 128;
    return (p + (p >> 8)) >> 8;
}

/// A colour, not premultiplied. The default is transparent.
struct Color {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 0;

    /// An opaque colour of 0xRRGGBB.
    static constexpr Color Rgb(std::uint32_t rgb)
    {
        return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                static_cast<std::uint8_t>(rgb), 255};
    }
    static constexpr Color Black() { return Rgb(0x000000); }
    static constexpr Color White() { return Rgb(0xFFFFFF); }

    /// The same colour with its alpha multiplied by `alpha`, 0..255.
    constexpr Color Faded(int alpha) const
    {
        return {r, g, b, static_cast<std::uint8_t>(AlphaProduct(a, alpha))};
    }
    constexpr Color WithAlpha(std::uint8_t alpha) const { return {r, g, b, alpha}; }

    friend constexpr bool operator==(Color x, Color y) = default;
};

/// A colour in floats, each 0..255, for what lies between two colours.
struct FloatColor {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 0;

    friend constexpr FloatColor operator+(FloatColor x, FloatColor y)
    {
        return {x.r + y.r, x.g + y.g, x.b + y.b, x.a + y.a};
    }
    friend constexpr FloatColor operator-(FloatColor x, FloatColor y)
    {
        return {x.r - y.r, x.g - y.g, x.b - y.b, x.a - y.a};
    }
    friend constexpr FloatColor operator*(FloatColor x, float factor)
    {
        return {x.r * factor, x.g * factor, x.b * factor, x.a * factor};
    }
};

constexpr FloatColor ToPrecise(Color color)
{
    return {static_cast<float>(color.r), static_cast<float>(color.g), static_cast<float>(color.b),
            static_cast<float>(color.a)};
}

/// Rounded to the nearest; each channel lies in 0..255.
constexpr Color FromPrecise(FloatColor color)
{
    const auto byte = [](float x) { return static_cast<std::uint8_t>(x + 0.5f); };
    return {byte(color.r), byte(color.g), byte(color.b), byte(color.a)};
}

/// The colour as a pixel of a bitmap: in memory B, G, R, T, premultiplied, T = 255 - alpha.
constexpr std::uint32_t ToPixel(Color color) noexcept
{
    const auto channel = [a = color.a](int c) { return static_cast<std::uint32_t>(AlphaProduct(c, a)); };
    return (255u - color.a) << 24 | channel(color.r) << 16 | channel(color.g) << 8 | channel(color.b);
}

/// The colour of a pixel, not premultiplied: channels divided by alpha, cut to whole numbers.
constexpr Color FromPixel(std::uint32_t pixel) noexcept
{
    const std::uint32_t a = 255u - (pixel >> 24);
    const auto channel = [a, pixel](int shift) {
        const std::uint32_t c = pixel >> shift & 0xFF;
        const std::uint32_t whole = a == 0 || a == 255 ? c : c * 255 / a;
        return static_cast<std::uint8_t>(whole < 255 ? whole : 255);
    };
    return {channel(16), channel(8), channel(0), static_cast<std::uint8_t>(a)};
}

constexpr std::uint32_t transparentPixel = 0xFF000000u;

}  // namespace gui
