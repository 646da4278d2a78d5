#pragma once

#include "foundation/Float4.h"

#if defined(SIMDE_X86_AVX_NATIVE) || (defined(__AVX2__) && !defined(SORDELIN_PLAIN_FLOAT4))
#include <simde/x86/avx.h>
#define SORDELIN_WIDE_FLOAT8 1
#endif

inline namespace SORDELIN_VECTOR_VARIANT {

/// Two Float4 side by side, in one register where there are such. Integers that go with it are aligned to 32
/// bytes, floats to 16.
class Float8 {
public:
    static constexpr int width = 8;

#if defined(SORDELIN_WIDE_FLOAT8)
    Float8() noexcept : v(simde_mm256_setzero_ps()) {}
    Float8(float x) noexcept : v(simde_mm256_set1_ps(x)) {}
    Float8(Float4 low, Float4 high) noexcept
        : v(simde_mm256_insertf128_ps(simde_mm256_castps128_ps256(low.v), high.v, 1))
    {}
    /// Eight floats that follow one another.
    static Float8 load(const float* from) noexcept REALTIME { return simde_mm256_loadu_ps(from); }
    void store(float* to) const noexcept REALTIME { simde_mm256_storeu_ps(to, v); }
    Float4 lower() const noexcept REALTIME { return simde_mm256_castps256_ps128(v); }
    Float4 upper() const noexcept REALTIME { return simde_mm256_extractf128_ps(v, 1); }
    friend Float8 operator+(Float8 a, Float8 b) noexcept REALTIME { return simde_mm256_add_ps(a.v, b.v); }
    friend Float8 operator-(Float8 a, Float8 b) noexcept REALTIME { return simde_mm256_sub_ps(a.v, b.v); }
    friend Float8 operator*(Float8 a, Float8 b) noexcept REALTIME { return simde_mm256_mul_ps(a.v, b.v); }
    friend Float8 max(Float8 a, Float8 b) noexcept REALTIME { return simde_mm256_max_ps(a.v, b.v); }
    friend Float8 min(Float8 a, Float8 b) noexcept REALTIME { return simde_mm256_min_ps(a.v, b.v); }
    friend Float8 multiplyAdd(Float8 a, Float8 b, Float8 c) noexcept REALTIME
    {
#if defined(SIMDE_X86_FMA_NATIVE)
        return simde_mm256_fmadd_ps(a.v, b.v, c.v);
#else
        return a * b + c;
#endif
    }
    friend Float8 multiplySubtractFrom(Float8 a, Float8 b, Float8 c) noexcept REALTIME
    {
#if defined(SIMDE_X86_FMA_NATIVE)
        return simde_mm256_fnmadd_ps(a.v, b.v, c.v);
#else
        return c - a * b;
#endif
    }
    /// As that of Float4, each half in a table of its own.
    friend void lookUpPairs(const float* const (&tables)[2], const int* indices, Float8& at,
                            Float8& behind) noexcept REALTIME
    {
        const simde__m256 first = rows(tables, indices, 0);
        const simde__m256 second = rows(tables, indices, 2);
        at.v = simde_mm256_shuffle_ps(first, second, SIMDE_MM_SHUFFLE(2, 0, 2, 0));
        behind.v = simde_mm256_shuffle_ps(first, second, SIMDE_MM_SHUFFLE(3, 1, 3, 1));
    }
    /// As that of Float4.
    friend Float8 floorTo(Float8 a, int* indices) noexcept REALTIME
    {
        const simde__m256 floor = simde_mm256_floor_ps(a.v);
        simde_mm256_store_si256(reinterpret_cast<simde__m256i*>(indices), simde_mm256_cvttps_epi32(floor));
        return floor;
    }
    /// Turns four rows into four columns, in each half for itself.
    friend void transpose(Float8& a, Float8& b, Float8& c, Float8& d) noexcept REALTIME
    {
        const simde__m256 ab = simde_mm256_unpacklo_ps(a.v, b.v);
        const simde__m256 abBehind = simde_mm256_unpackhi_ps(a.v, b.v);
        const simde__m256 cd = simde_mm256_unpacklo_ps(c.v, d.v);
        const simde__m256 cdBehind = simde_mm256_unpackhi_ps(c.v, d.v);
        a.v = simde_mm256_shuffle_ps(ab, cd, SIMDE_MM_SHUFFLE(1, 0, 1, 0));
        b.v = simde_mm256_shuffle_ps(ab, cd, SIMDE_MM_SHUFFLE(3, 2, 3, 2));
        c.v = simde_mm256_shuffle_ps(abBehind, cdBehind, SIMDE_MM_SHUFFLE(1, 0, 1, 0));
        d.v = simde_mm256_shuffle_ps(abBehind, cdBehind, SIMDE_MM_SHUFFLE(3, 2, 3, 2));
    }

private:
    /// Two pairs of each half.
    static simde__m256 rows(const float* const (&tables)[2], const int* indices, int from) noexcept REALTIME
    {
        return Float8(Float4::pairs(tables[0], indices + from), Float4::pairs(tables[1], indices + 4 + from))
            .v;
    }
    Float8(simde__m256 x) noexcept : v(x) {}
    simde__m256 v;
#else
    Float8() noexcept = default;
    Float8(float x) noexcept : low(x), high(x) {}
    Float8(Float4 lowerHalf, Float4 upperHalf) noexcept : low(lowerHalf), high(upperHalf) {}
    static Float8 load(const float* from) noexcept REALTIME
    {
        return {Float4::load(from), Float4::load(from + Float4::width)};
    }
    void store(float* to) const noexcept REALTIME
    {
        low.store(to);
        high.store(to + Float4::width);
    }
    Float4 lower() const noexcept REALTIME { return low; }
    Float4 upper() const noexcept REALTIME { return high; }
    friend Float8 operator+(const Float8& a, const Float8& b) noexcept REALTIME
    {
        return {a.low + b.low, a.high + b.high};
    }
    friend Float8 operator-(const Float8& a, const Float8& b) noexcept REALTIME
    {
        return {a.low - b.low, a.high - b.high};
    }
    friend Float8 operator*(const Float8& a, const Float8& b) noexcept REALTIME
    {
        return {a.low * b.low, a.high * b.high};
    }
    friend Float8 max(const Float8& a, const Float8& b) noexcept REALTIME
    {
        return {max(a.low, b.low), max(a.high, b.high)};
    }
    friend Float8 min(const Float8& a, const Float8& b) noexcept REALTIME
    {
        return {min(a.low, b.low), min(a.high, b.high)};
    }
    friend Float8 multiplyAdd(const Float8& a, const Float8& b, const Float8& c) noexcept REALTIME
    {
        return {multiplyAdd(a.low, b.low, c.low), multiplyAdd(a.high, b.high, c.high)};
    }
    friend Float8 multiplySubtractFrom(const Float8& a, const Float8& b, const Float8& c) noexcept REALTIME
    {
        return {multiplySubtractFrom(a.low, b.low, c.low), multiplySubtractFrom(a.high, b.high, c.high)};
    }
    friend void lookUpPairs(const float* const (&tables)[2], const int* indices, Float8& at,
                            Float8& behind) noexcept REALTIME
    {
        lookUpPairs(tables[0], indices, at.low, behind.low);
        lookUpPairs(tables[1], indices + Float4::width, at.high, behind.high);
    }
    friend Float8 floorTo(const Float8& a, int* indices) noexcept REALTIME
    {
        return {floorTo(a.low, indices), floorTo(a.high, indices + Float4::width)};
    }
    friend void transpose(Float8& a, Float8& b, Float8& c, Float8& d) noexcept REALTIME
    {
        transpose(a.low, b.low, c.low, d.low);
        transpose(a.high, b.high, c.high, d.high);
    }

private:
    Float4 low;
    Float4 high;
#endif
};

/// `x` held within [low, high]; a NaN becomes `low`.
inline Float8 clamp(Float8 x, Float8 low, Float8 high) noexcept REALTIME { return min(max(x, low), high); }

}  // namespace SORDELIN_VECTOR_VARIANT
