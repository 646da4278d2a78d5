#pragma once

#include "parameters/FloatPluginParameterUnit.h"

/// Units that show milliseconds up to one second and seconds from there on. A bare number may mean either:
/// the one that the parameter's range, or its present value, makes likely.

/// For signals in milliseconds.
class MsParameterUnit final : public FloatPluginParameterUnit {
public:
    constexpr MsParameterUnit() : FloatPluginParameterUnit(known) {}
    std::optional<std::string> valueToText(float display) const override;
    double adjustBareNumber(double number, float current, float low, float high) const override;

private:
    static constexpr Entry known[] = {{"ms"}, {"sec", 1000.0}, {"s", 1000.0}};
};

/// For signals in seconds.
class SecParameterUnit final : public FloatPluginParameterUnit {
public:
    constexpr SecParameterUnit() : FloatPluginParameterUnit(known) {}
    std::optional<std::string> valueToText(float display) const override;
    double adjustBareNumber(double number, float current, float low, float high) const override;

private:
    static constexpr Entry known[] = {{"sec"}, {"s"}, {"ms", 0.001}};
};

inline constexpr MsParameterUnit msUnit;
inline constexpr SecParameterUnit secUnit;
