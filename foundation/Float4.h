#pragma once

#include "foundation/Realtime.h"

// SORDELIN_PLAIN_FLOAT4 chooses the plain code, for processors without vectors and for checking one against
// the other.
#if !defined(SORDELIN_PLAIN_FLOAT4)
#include <simde/x86/sse2.h>
#endif

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
