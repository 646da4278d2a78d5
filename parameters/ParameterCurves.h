#pragma once

#include "parameters/ParameterCurve.h"

/// The curves between the travel of a control and a linear value, each with its inverse. Those that give a
/// range here stay at its ends outside it.

/// For levels and times, fine at the bottom: 0..1 to 0..1, through 0.16 at half way. Odd: -1..0 mirrors it.
extern const ParameterCurve knobCurve;

/// For modulation frequencies: 0..0.98 to 0..1, with half of the travel for the lowest 0.7 %.
extern const ParameterCurve rateCurve;

/// For attack and release of a follower: 0..1 to 0..1, through 0.1 at half way.
extern const ParameterCurve followerCurve;

/// For output levels: 36 dB from 1 down to 0.1 of the travel, then straight to a gain of 0.
extern const ParameterCurve levelCurve;

/// Octaves to a factor: -1..1 gives 0.5..2. Unlimited.
extern const ParameterCurve octaveCurve;

/// Decibels to gain. Unlimited above, -180 dB below.
extern const ParameterCurve decibelCurve;
