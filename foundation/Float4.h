#pragma once

#include "foundation/Realtime.h"

// SORDELIN_PLAIN_FLOAT4 chooses the plain code, for processors without vectors and for checking one against
// the other.
#if !defined(SORDELIN_PLAIN_FLOAT4)
#include <simde/x86/fma.h>
#include <simde/x86/sse2.h>
#endif

// Code that is compiled for other processors than the rest names its variant before it includes this: its
// functions then have names of their own, and the linker can't hand them to the rest.
#if !defined(SORDELIN_VECTOR_VARIANT)
#define SORDELIN_VECTOR_VARIANT common
#endif

inline namespace SORDELIN_VECTOR_VARIANT {

class Float8;

/// Four floats side by side. Each operation works on the four of them alike; comparisons of NaN are false, so
/// that `max` and `min` answer their second argument when the first is NaN. Memory is aligned to 16 bytes.
class Float4 {
public:
    static constexpr int width = 4;

#if !defined(SORDELIN_PLAIN_FLOAT4)
    Float4() noexcept : v(simde_mm_setzero_ps()) {}
    Float4(float x) noexcept : v(simde_mm_set1_ps(x)) {}
    static Float4 load(const float* from) noexcept REALTIME { return simde_mm_load_ps(from); }
    void store(float* to) const noexcept REALTIME { simde_mm_store_ps(to, v); }
    friend Float4 operator+(Float4 a, Float4 b) noexcept REALTIME { return simde_mm_add_ps(a.v, b.v); }
    friend Float4 operator-(Float4 a, Float4 b) noexcept REALTIME { return simde_mm_sub_ps(a.v, b.v); }
    friend Float4 operator*(Float4 a, Float4 b) noexcept REALTIME { return simde_mm_mul_ps(a.v, b.v); }
    friend Float4 max(Float4 a, Float4 b) noexcept REALTIME { return simde_mm_max_ps(a.v, b.v); }
    friend Float4 min(Float4 a, Float4 b) noexcept REALTIME { return simde_mm_min_ps(a.v, b.v); }
    /// a b + c, rounded once where the processor has an operation for it.
    friend Float4 multiplyAdd(Float4 a, Float4 b, Float4 c) noexcept REALTIME
    {
#if defined(SIMDE_X86_FMA_NATIVE)
        return simde_mm_fmadd_ps(a.v, b.v, c.v);
#else
        return a * b + c;
#endif
    }
    /// c - a b, likewise.
    friend Float4 multiplySubtractFrom(Float4 a, Float4 b, Float4 c) noexcept REALTIME
    {
#if defined(SIMDE_X86_FMA_NATIVE)
        return simde_mm_fnmadd_ps(a.v, b.v, c.v);
#else
        return c - a * b;
#endif
    }
    /// `table[index]` for each of four indices, and what stands behind it.
    friend void lookUpPairs(const float* table, const int* indices, Float4& at,
                            Float4& behind) noexcept REALTIME
    {
        const simde__m128 first = pairs(table, indices);
        const simde__m128 second = pairs(table, indices + 2);
        at.v = simde_mm_shuffle_ps(first, second, SIMDE_MM_SHUFFLE(2, 0, 2, 0));
        behind.v = simde_mm_shuffle_ps(first, second, SIMDE_MM_SHUFFLE(3, 1, 3, 1));
    }
    /// The whole number at or below each, for magnitudes below 2^31; also as integers into `indices`.
    friend Float4 floorTo(Float4 a, int* indices) noexcept REALTIME
    {
        const simde__m128i cut = simde_mm_cvttps_epi32(a.v);
        const simde__m128 cutBack = simde_mm_cvtepi32_ps(cut);
        // All ones, which is -1, where cutting went up.
        const simde__m128i down = simde_mm_castps_si128(simde_mm_cmpgt_ps(cutBack, a.v));
        const simde__m128i floor = simde_mm_add_epi32(cut, down);
        simde_mm_store_si128(reinterpret_cast<simde__m128i*>(indices), floor);
        return simde_mm_cvtepi32_ps(floor);
    }
    /// Turns four rows into four columns.
    friend void transpose(Float4& a, Float4& b, Float4& c, Float4& d) noexcept REALTIME
    {
        SIMDE_MM_TRANSPOSE4_PS(a.v, b.v, c.v, d.v);
    }

private:
    friend class Float8;
    /// `table[index]` and what stands behind it, for two indices.
    static simde__m128 pairs(const float* table, const int* indices) noexcept REALTIME
    {
        const auto pair = [&](int i) { return reinterpret_cast<const simde__m64*>(table + indices[i]); };
        return simde_mm_loadh_pi(simde_mm_loadl_pi(simde_mm_setzero_ps(), pair(0)), pair(1));
    }
    Float4(simde__m128 x) noexcept : v(x) {}
    simde__m128 v;
#else
    Float4() noexcept : v{} {}
    Float4(float x) noexcept : v{x, x, x, x} {}
    static Float4 load(const float* from) noexcept REALTIME
    {
        return made([from](int i) { return from[i]; });
    }
    void store(float* to) const noexcept REALTIME
    {
        for (int i = 0; i < width; ++i)
            to[i] = v[i];
    }
    friend Float4 operator+(const Float4& a, const Float4& b) noexcept REALTIME
    {
        return made([&](int i) { return a.v[i] + b.v[i]; });
    }
    friend Float4 operator-(const Float4& a, const Float4& b) noexcept REALTIME
    {
        return made([&](int i) { return a.v[i] - b.v[i]; });
    }
    friend Float4 operator*(const Float4& a, const Float4& b) noexcept REALTIME
    {
        return made([&](int i) { return a.v[i] * b.v[i]; });
    }
    friend Float4 max(const Float4& a, const Float4& b) noexcept REALTIME
    {
        return made([&](int i) { return a.v[i] > b.v[i] ? a.v[i] : b.v[i]; });
    }
    friend Float4 min(const Float4& a, const Float4& b) noexcept REALTIME
    {
        return made([&](int i) { return a.v[i] < b.v[i] ? a.v[i] : b.v[i]; });
    }
    friend Float4 multiplyAdd(const Float4& a, const Float4& b, const Float4& c) noexcept REALTIME
    {
        return a * b + c;
    }
    friend Float4 multiplySubtractFrom(const Float4& a, const Float4& b, const Float4& c) noexcept REALTIME
    {
        return c - a * b;
    }
    friend void lookUpPairs(const float* table, const int* indices, Float4& at,
                            Float4& behind) noexcept REALTIME
    {
        at = made([&](int i) { return table[indices[i]]; });
        behind = made([&](int i) { return table[indices[i] + 1]; });
    }
    friend Float4 floorTo(const Float4& a, int* indices) noexcept REALTIME
    {
        return made([&](int i) {
            indices[i] = static_cast<int>(a.v[i]);
            indices[i] -= static_cast<float>(indices[i]) > a.v[i] ? 1 : 0;
            return static_cast<float>(indices[i]);
        });
    }
    friend void transpose(Float4& a, Float4& b, Float4& c, Float4& d) noexcept REALTIME
    {
        Float4* rows[] = {&a, &b, &c, &d};
        for (int i = 0; i < width; ++i) {
            for (int j = 0; j < i; ++j) {
                const float kept = rows[i]->v[j];
                rows[i]->v[j] = rows[j]->v[i];
                rows[j]->v[i] = kept;
            }
        }
    }

private:
    template <class F>
    static Float4 made(F element) noexcept
    {
        Float4 result;
        for (int i = 0; i < width; ++i)
            result.v[i] = element(i);
        return result;
    }
    alignas(16) float v[width];
#endif
};

/// `x` held within [low, high]; a NaN becomes `low`.
inline Float4 clamp(Float4 x, Float4 low, Float4 high) noexcept REALTIME { return min(max(x, low), high); }

}  // namespace SORDELIN_VECTOR_VARIANT
