#pragma once

#include "parameters/FloatValueFormat.h"
#include "parameters/TypedPluginParameter.h"

#include <atomic>

/// A parameter on a continuous range.
class FloatPluginParameter : public TypedPluginParameter<float> {
public:
    using TypedPluginParameter::TypedPluginParameter;

    /// Sets the range, 0..1 until then, and puts the parameter at its default, without a word to the owner.
    void setRange(float lowest, float highest, float initial);
    void setCurve(const ParameterCurve& curve) { format.curve = curve; }
    /// Lets the signal run from `low` to `high` over the range, along the curve. The display shows the
    /// signal. Comes after `setRange`.
    void setSignalRange(float low, float high);
    /// Takes over the unit's label and way of printing. Comes after the curves.
    void setUnit(const FloatPluginParameterUnit& unit);

    float currentValue() const noexcept REALTIME override { return current.load(); }
    /// NaN is no value, and dropped.
    void setValue(float newValue, int flags) noexcept REALTIME override;
    void deliverValue(float newValue) noexcept REALTIME override;

    float minimumValue() const noexcept REALTIME override { return minimum; }
    float maximumValue() const noexcept REALTIME override { return maximum; }
    float defaultValue() const noexcept REALTIME override { return initialValue; }

    float valueToSignal(float value) const noexcept REALTIME override { return format.valueToSignal(value); }
    float signalToValue(float signal) const noexcept REALTIME override
    {
        return format.signalToValue(signal);
    }
    float valueToDisplay(float value) const noexcept REALTIME override
    {
        return format.valueToDisplay(value);
    }
    float displayToValue(float display) const noexcept REALTIME override
    {
        return format.displayToValue(display);
    }
    float valueToNormal(float value) const noexcept REALTIME override
    {
        return (value - minimum) / (maximum - minimum);
    }
    float normalToValue(float normal) const noexcept REALTIME override
    {
        return (maximum - minimum) * normal + minimum;
    }

    std::string valueText(float value) const override;
    /// Reads a number with or without a unit, a percentage of the range, or the name of a note for a
    /// frequency. A comma is a decimal point. Numbers are brought into the range; a note is what it is.
    std::optional<float> parseText(std::string_view text) const override;
    bool isNumeric() const noexcept override { return true; }

    FloatValueFormat format;

private:
    std::optional<double> withUnit(double number, std::string_view suffix) const;
    float limited(float value) const noexcept REALTIME;
    float shownValue(double display) const;

    float initialValue = 0.0f;
    float maximum = 1.0f;
    float minimum = 0.0f;
    std::atomic<float> current{0.0f};  // written and read by both threads; each value stands for itself
};
