#pragma once

#include <cstdint>

// SORDELIN_PLAIN_FLOAT4 chooses the plain code here too.
#if !defined(SORDELIN_PLAIN_FLOAT4)
#include <simde/x86/sse2.h>
#else
#include <algorithm>
#include <cstring>
#endif

/// Four pixels side by side, each of four bytes B, G, R, T: colours premultiplied by alpha, T = 255 - alpha.
/// A product of two bytes is rounded to the nearest of a b / 255. Memory needs no alignment beyond a pixel's.
class Pixel4 {
public:
    static constexpr int width = 4;
    static constexpr std::uint32_t transparent = 0xFF000000u;

#if !defined(SORDELIN_PLAIN_FLOAT4)
    explicit Pixel4(std::uint32_t pixel) noexcept : v(simde_mm_set1_epi32(static_cast<int>(pixel))) {}
    static Pixel4 load(const std::uint32_t* from) noexcept
    {
        return Pixel4(simde_mm_loadu_si128(reinterpret_cast<const simde__m128i*>(from)));
    }
    void store(std::uint32_t* to) const noexcept
    {
        simde_mm_storeu_si128(reinterpret_cast<simde__m128i*>(to), v);
    }
    bool allOpaque() const noexcept
    {
        const simde__m128i top = simde_mm_srli_epi32(v, 24);
        return simde_mm_movemask_epi8(simde_mm_cmpeq_epi32(top, simde_mm_setzero_si128())) == 0xFFFF;
    }
    bool allTransparent() const noexcept
    {
        return simde_mm_movemask_epi8(simde_mm_cmpeq_epi32(v, Pixel4(transparent).v)) == 0xFFFF;
    }
    /// Each colour and each alpha times `factors`' alpha of the same pixel.
    Pixel4 timesAlphaOf(Pixel4 factors) const noexcept
    {
        const simde__m128i top = Pixel4(transparent).v;
        const simde__m128i colours = simde_mm_xor_si128(v, top);
        return Pixel4(simde_mm_xor_si128(timesTopOf(colours, simde_mm_xor_si128(factors.v, top)), top));
    }
    /// These pixels laid over `below`.
    Pixel4 over(Pixel4 below) const noexcept
    {
        const simde__m128i colours = simde_mm_andnot_si128(Pixel4(transparent).v, v);
        return Pixel4(simde_mm_adds_epu8(colours, timesTopOf(below.v, v)));
    }

private:
    explicit Pixel4(simde__m128i x) noexcept : v(x) {}
    /// a b / 255 in eight 16-bit lanes.
    static simde__m128i product(simde__m128i a, simde__m128i b) noexcept
    {
        const simde__m128i p = simde_mm_add_epi16(simde_mm_mullo_epi16(a, b), simde_mm_set1_epi16(128));
        return simde_mm_srli_epi16(simde_mm_add_epi16(p, simde_mm_srli_epi16(p, 8)), 8);
    }
    static simde__m128i spreadTop(simde__m128i pixels) noexcept
    {
        constexpr int top = SIMDE_MM_SHUFFLE(3, 3, 3, 3);
        return simde_mm_shufflehi_epi16(simde_mm_shufflelo_epi16(pixels, top), top);
    }
    static simde__m128i timesTopOf(simde__m128i pixels, simde__m128i factors) noexcept
    {
        const simde__m128i none = simde_mm_setzero_si128();
        return simde_mm_packus_epi16(
            product(simde_mm_unpacklo_epi8(pixels, none), spreadTop(simde_mm_unpacklo_epi8(factors, none))),
            product(simde_mm_unpackhi_epi8(pixels, none), spreadTop(simde_mm_unpackhi_epi8(factors, none))));
    }
    simde__m128i v;
#else
    explicit Pixel4(std::uint32_t pixel) noexcept : v{pixel, pixel, pixel, pixel} {}
    static Pixel4 load(const std::uint32_t* from) noexcept
    {
        Pixel4 result(0);
        std::memcpy(result.v, from, sizeof result.v);
        return result;
    }
    void store(std::uint32_t* to) const noexcept { std::memcpy(to, v, sizeof v); }
    bool allOpaque() const noexcept
    {
        return std::all_of(v, v + width, [](std::uint32_t pixel) { return pixel >> 24 == 0; });
    }
    bool allTransparent() const noexcept
    {
        return std::all_of(v, v + width, [](std::uint32_t pixel) { return pixel == transparent; });
    }
    Pixel4 timesAlphaOf(const Pixel4& factors) const noexcept
    {
        return made([&](int i) { return times(v[i] ^ transparent, ~factors.v[i] >> 24) ^ transparent; });
    }
    Pixel4 over(const Pixel4& below) const noexcept
    {
        return made([&](int i) { return (v[i] & ~transparent) + times(below.v[i], v[i] >> 24); });
    }

private:
    static std::uint32_t times(std::uint32_t pixel, std::uint32_t factor) noexcept
    {
        std::uint32_t result = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            const std::uint32_t p = (pixel >> shift & 0xFF) * factor + 128;
            result |= (p + (p >> 8)) >> 8 << shift;
        }
        return result;
    }
    template <class F>
    static Pixel4 made(F pixel) noexcept
    {
        Pixel4 result(0);
        for (int i = 0; i < width; ++i)
            result.v[i] = pixel(i);
        return result;
    }
    std::uint32_t v[width];
#endif
};
