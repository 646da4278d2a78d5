#pragma once

#include "dsp/Conversions.h"
#include "parameters/FloatPluginParameterUnit.h"

/// Units that show decibels. Typed text may also be a gain: "0.5 x".
class DBParameterUnitBase : public FloatPluginParameterUnit {
protected:
    static constexpr Entry decibels[] = {{"dB"}, {"x", 1.0, gainToDb}, {"*", 1.0, gainToDb}};
    static constexpr Entry truePeakDecibels[] = {{"dBTP"}, {"x", 1.0, gainToDb}, {"*", 1.0, gainToDb}};

    constexpr explicit DBParameterUnitBase(std::span<const Entry> known) : FloatPluginParameterUnit(known) {}
    ~DBParameterUnitBase() = default;
};

/// For levels: with a sign, down to -INF.
class DBParameterUnit final : public DBParameterUnitBase {
public:
    enum class Kind { Plain, TruePeak };
    constexpr explicit DBParameterUnit(Kind kind)
        : DBParameterUnitBase(kind == Kind::Plain ? std::span<const Entry>(decibels)
                                                  : std::span<const Entry>(truePeakDecibels))
    {}
    void configure(FloatValueFormat& format) const override;
};

/// For distances between levels.
class DBRangeParameterUnit final : public DBParameterUnitBase {
public:
    constexpr DBRangeParameterUnit() : DBParameterUnitBase(decibels) {}
    void configure(FloatValueFormat& format) const override;
};

inline constexpr DBParameterUnit dbUnit{DBParameterUnit::Kind::Plain};
inline constexpr DBParameterUnit dbTruePeakUnit{DBParameterUnit::Kind::TruePeak};
inline constexpr DBRangeParameterUnit dbRangeUnit;
