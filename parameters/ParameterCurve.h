#pragma once

#include "foundation/Realtime.h"

/// A mapping and its inverse, as plain functions: they run on the audio thread.
struct ParameterCurve {
    using Function = float (*)(float) noexcept REALTIME;
    Function forward;
    Function inverse;
};

constexpr float unchanged(float value) noexcept REALTIME { return value; }

inline constexpr ParameterCurve identityCurve{unchanged, unchanged};
