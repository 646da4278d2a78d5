#pragma once

#include "parameters/FloatPluginParameterUnit.h"

/// Units that differ by their words and their number format alone.

/// For signals in octaves, shown in semitones. Typed text may be in octaves, notes or cents.
class OctavesParameterUnit final : public FloatPluginParameterUnit {
public:
    constexpr OctavesParameterUnit() : FloatPluginParameterUnit(known) {}
    void configure(FloatValueFormat& format) const override;

private:
    static constexpr Entry known[] = {{"semitones"},    {"semitone"},    {"octaves", 12.0},
                                      {"octave", 12.0}, {"oct", 12.0},   {"notes"},
                                      {"note"},         {"cents", 0.01}, {"cent", 0.01}};
};

/// For signals in percent.
class PercentParameterUnit final : public FloatPluginParameterUnit {
public:
    constexpr PercentParameterUnit() : FloatPluginParameterUnit(known) {}
    void configure(FloatValueFormat& format) const override;

private:
    static constexpr Entry known[] = {{"%"}};
};

/// For ratios to one.
class RatioParameterUnit final : public FloatPluginParameterUnit {
public:
    constexpr RatioParameterUnit() : FloatPluginParameterUnit(known) {}
    void configure(FloatValueFormat& format) const override;

private:
    static constexpr Entry known[] = {{":1"}};
};

/// For the slope of a filter.
class SlopeParameterUnit final : public FloatPluginParameterUnit {
public:
    constexpr SlopeParameterUnit() : FloatPluginParameterUnit(known) {}
    void configure(FloatValueFormat& format) const override;

private:
    static constexpr Entry known[] = {{"dB/oct"}};
};

inline constexpr OctavesParameterUnit octavesUnit;
inline constexpr PercentParameterUnit percentUnit;
inline constexpr RatioParameterUnit ratioUnit;
inline constexpr SlopeParameterUnit slopeUnit;
