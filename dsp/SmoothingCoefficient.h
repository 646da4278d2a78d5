#pragma once

#include "foundation/Realtime.h"

/// The coefficient of the two-pole smoothing low-pass in state-variable form:
///
///   position += coefficient * velocity
///   velocity += (input - damping * velocity - position) * coefficient
///
/// It is 2 sin(pi f / fs), held at or below 0.95, where the loop is stable with a damping of 2 (critical).
/// @param frequency   Hz, above 0
/// @param sampleRate  Hz, above 0
float smoothingCoefficient(float frequency, float sampleRate) noexcept REALTIME;
