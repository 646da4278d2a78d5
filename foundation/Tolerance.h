#pragma once

#include "foundation/Realtime.h"

/// Values closer than this are the same value: the epsilon of single precision, used for parameter and signal
/// values against 0, 1 or what they were before.
constexpr float signalEpsilon = 1.1920929e-7f;

/// True if `a` and `b` differ by no more than `signalEpsilon`. False if either is NaN.
constexpr bool isNear(float a, float b) noexcept REALTIME
{
    const float difference = a - b;
    return difference <= signalEpsilon && -difference <= signalEpsilon;
}

/// The equality that properties use: exact, but for floats.
template <class T>
bool isSameValue(const T& a, const T& b) noexcept REALTIME
{
    return a == b;
}

inline bool isSameValue(float a, float b) noexcept REALTIME { return isNear(a, b); }
