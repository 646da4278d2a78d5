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
};

}  // namespace gui
