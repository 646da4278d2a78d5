#pragma once

/// What a filter lets through.
enum class FilterResponse { LowPass, HighPass, BandPass };

/// How steep a filter is, in dB per octave.
enum class FilterSlope { Db6, Db12, Db24, Db48 };
