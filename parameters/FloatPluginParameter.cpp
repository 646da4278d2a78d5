#include "parameters/FloatPluginParameter.h"

#include "foundation/Tolerance.h"
#include "parameters/Abbreviation.h"
#include "parameters/FloatPluginParameterUnit.h"
#include "parameters/NumberText.h"

#include <algorithm>
#include <cmath>

void FloatPluginParameter::setRange(float lowest, float highest, float initial)
{
    minimum = lowest;
    maximum = highest;
    initialValue = initial;
    current.store(initial, std::memory_order_relaxed);
}

void FloatPluginParameter::setSignalRange(float low, float high)
{
    format.signalScale = (high - low) / (maximum - minimum);
    format.signalOffset = low - minimum * format.signalScale;
    format.displayScale = 1.0f;
    format.displayOffset = 0.0f;
}

void FloatPluginParameter::setUnit(const FloatPluginParameterUnit& unit)
{
    format.label = unit.label();
    format.unit = &unit;
    unit.configure(format);
}

float FloatPluginParameter::limited(float value) const noexcept
{
    return value < minimum ? minimum : std::min(maximum, value);
}

void FloatPluginParameter::setValue(float newValue, int flags) noexcept
{
    if (std::isnan(newValue))
        return;
    const float taken = limited(newValue);
    if (isNear(taken, currentValue()))
        return;
    current.store(taken);
    announce(taken, flags);
}

void FloatPluginParameter::deliverValue(float newValue) noexcept
{
    const float signal = valueToSignal(newValue);
    deliver(signal, signal);
}

std::string FloatPluginParameter::valueText(float value) const
{
    const float display = valueToDisplay(value);
    if (format.unit)
        if (const auto text = format.unit->valueToText(display))
            return *text;
    std::string text =
        format.textFormatter ? format.textFormatter(display) : formatNumber(display, format.numberFormat);
    if (!format.label.empty())
        text.append(format.separator).append(format.label);
    return text;
}

std::optional<float> FloatPluginParameter::parseText(std::string_view text) const
{
    std::string pointed(text);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    std::string_view typed = skipBlanks(pointed);
    if (!format.prefix.empty() && typed.starts_with(format.prefix))
        typed = skipBlanks(typed.substr(format.prefix.size()));

    const auto number = readNumber(typed);
    if (!number) {
        const auto log2Hz = format.unit ? format.unit->parseName(typed) : std::nullopt;
        return log2Hz ? std::optional(displayToValue(std::exp2(*log2Hz))) : std::nullopt;
    }
    const std::string_view rest = skipBlanks(number->rest);
    const std::string_view suffix = rest.substr(0, rest.find(' '));
    if (suffix == "%" && format.label != "%")
        return limited(normalToValue(static_cast<float>(number->value * 0.01)));
    const auto display = withUnit(number->value, suffix);
    return display ? std::optional(shownValue(*display)) : std::nullopt;
}

/// The display value that a number means with the unit behind it. None if the unit isn't known.
std::optional<double> FloatPluginParameter::withUnit(double number, std::string_view suffix) const
{
    if (format.unit && !suffix.empty())
        return format.unit->convert(number, suffix);
    if (!suffix.empty())
        return compareIgnoringCase(suffix, format.label) == 0 ? std::optional(number) : std::nullopt;
    if (!format.unit)
        return number;
    const auto [low, high] = std::minmax({valueToDisplay(minimum), valueToDisplay(maximum)});
    return format.unit->adjustBareNumber(number, valueToDisplay(currentValue()), low, high);
}

/// The parameter value that shows as `display`, or as near to it as the range allows.
float FloatPluginParameter::shownValue(double display) const
{
    const float atMinimum = valueToDisplay(minimum);
    const float atMaximum = valueToDisplay(maximum);
    const auto [low, high] = std::minmax({atMinimum, atMaximum});
    if (high <= 0.0f)
        display = -std::fabs(display);  // where all values are negative the sign may be left out
    // A whole stretch may show as the lowest value, as -INF dB does: silence is the end of the range, not
    // near it.
    if (display <= low)
        return low == atMinimum ? minimum : maximum;
    return limited(displayToValue(static_cast<float>(std::min<double>(display, high))));
}
