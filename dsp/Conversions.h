#pragma once

#include "foundation/Realtime.h"

/// Scalar conversions between the units of the graph. They round alike on every machine: a float argument is
/// widened to double before it meets a constant, and the result is stored as float. None of them can fail.
/// Thread: any.

/// Decibels to linear gain.
float dbToGain(float db) noexcept REALTIME;

/// Linear gain, of either sign, to decibels. Never below -180 dB, which is also what silence gives.
float gainToDb(float gain) noexcept REALTIME;

/// Octaves to a frequency ratio, and log2 of Hz to Hz.
float octaveToRatio(float octaves) noexcept REALTIME;

/// A frequency ratio to octaves, and Hz to log2 of Hz. `ratio` is above 0.
float ratioToOctave(float ratio) noexcept REALTIME;

float octavesToSemitones(float octaves) noexcept REALTIME;
float semitonesToOctaves(float semitones) noexcept REALTIME;

/// As `octaveToRatio` above 1/8, and from there on a straight line down to exactly 0, which it reaches at
/// log2 of 0.02.
float octaveToRatioWithZero(float octaves) noexcept REALTIME;
float ratioToOctaveWithZero(float ratio) noexcept REALTIME;
