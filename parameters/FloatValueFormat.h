#pragma once

#include "parameters/ParameterCurve.h"

#include <string>
#include <string_view>

class FloatPluginParameterUnit;

/// How the values of a float parameter become signals and texts:
///
///   signal  = curve(value) * signalScale + signalOffset
///   display = shown(signal * displayScale + displayOffset)
///   text    = number, separator, label
///
/// The texts are static ones.
struct FloatValueFormat {
    using TextFormatter = std::string (*)(float);

    ParameterCurve curve = identityCurve;
    float signalScale = 1.0f;
    float signalOffset = 0.0f;

    float displayScale = 1.0f;
    float displayOffset = 0.0f;
    ParameterCurve shown = identityCurve;

    std::string_view numberFormat = "%.3f";  // see formatNumber
    TextFormatter textFormatter = nullptr;   // in place of `numberFormat`
    std::string_view separator = " ";
    std::string_view label;
    std::string_view prefix;  // what typed text may begin with
    const FloatPluginParameterUnit* unit = nullptr;

    float valueToSignal(float value) const noexcept REALTIME
    {
        return curve.forward(value) * signalScale + signalOffset;
    }
    float signalToValue(float signal) const noexcept REALTIME
    {
        return curve.inverse((signal - signalOffset) / signalScale);
    }
    float valueToDisplay(float value) const noexcept REALTIME
    {
        return shown.forward(valueToSignal(value) * displayScale + displayOffset);
    }
    float displayToValue(float display) const noexcept REALTIME
    {
        return signalToValue((shown.inverse(display) - displayOffset) / displayScale);
    }
};
