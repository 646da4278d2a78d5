#pragma once

#include "parameters/FloatPluginParameterUnit.h"

/// Units that show Hz. Typed text may also be in kHz, or a note: "A4", "c#3", "Bb2+25" with cents. Middle C
/// is C4.
class FreqParameterUnit : public FloatPluginParameterUnit {
public:
    std::optional<float> parseName(std::string_view text) const override;
    void configure(FloatValueFormat& format) const override;

protected:
    constexpr FreqParameterUnit() : FloatPluginParameterUnit(known) {}
    ~FreqParameterUnit() = default;

private:
    static constexpr Entry known[] = {{"Hz"}, {"kHz", 1000.0}, {"k", 1000.0}};
};

/// For signals in Hz.
class HzParameterUnit final : public FreqParameterUnit {};

/// For signals in log2 of Hz.
class ExpFreqParameterUnit final : public FreqParameterUnit {
public:
    void configure(FloatValueFormat& format) const override;
};

/// For signals in log2 of Hz whose lowest value, log2 of 0.02, stands for 0 Hz.
class ExpFreqWithZeroParameterUnit final : public FreqParameterUnit {
public:
    void configure(FloatValueFormat& format) const override;
};

inline constexpr HzParameterUnit hzUnit;
inline constexpr ExpFreqParameterUnit expFreqUnit;
inline constexpr ExpFreqWithZeroParameterUnit expFreqWithZeroUnit;
