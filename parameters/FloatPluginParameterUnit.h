#pragma once

#include "parameters/FloatValueFormat.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What a unit knows: the words for it that users type, and how its numbers are printed. Units are constants,
/// shared by all parameters that use them. Thread: any but audio.
class FloatPluginParameterUnit {
public:
    /// A typed number with `label` behind it means conversion(number * factor).
    struct Entry {
        std::string_view label;
        double factor = 1.0;
        ParameterCurve::Function conversion = unchanged;
    };

    std::string_view label() const noexcept { return entries.front().label; }

    /// The display value that `number` means with `suffix`, in any case of letters, behind it. None if the
    /// unit doesn't know the suffix.
    std::optional<double> convert(double number, std::string_view suffix) const;

    /// The whole text of a display value, for units that choose the label by the size of the number.
    virtual std::optional<std::string> valueToText(float) const { return std::nullopt; }
    /// Reads a name in place of a number. Returns the log2 of its frequency in Hz.
    virtual std::optional<float> parseName(std::string_view) const { return std::nullopt; }
    /// Sets how a parameter of this unit prints.
    virtual void configure(FloatValueFormat&) const {}
    /// The display value that `number` means without a suffix, for units where it may mean another unit.
    /// @param current    the parameter's display value
    /// @param low, high  the ends of the parameter's range, as displayed
    virtual double adjustBareNumber(double number, float, float, float) const { return number; }

protected:
    /// @param known  static; the first one is the label that texts carry
    constexpr explicit FloatPluginParameterUnit(std::span<const Entry> known) : entries(known) {}
    ~FloatPluginParameterUnit() = default;

private:
    std::span<const Entry> entries;
};
