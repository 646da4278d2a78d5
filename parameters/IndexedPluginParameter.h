#pragma once

#include "parameters/IndexedValueFormat.h"
#include "parameters/TypedPluginParameter.h"

#include <atomic>
#include <string>
#include <utility>

/// A parameter of whole numbers, named items or a switch: `T` is int, bool or an enumeration whose values are
/// the raw values. Its parameter value is the position, in float.
template <class T>
class IndexedPluginParameter : public TypedPluginParameter<T> {
public:
    IndexedPluginParameter(GenericParameterOwner* parameterOwner, std::string identifyingName)
        : TypedPluginParameter<T>(parameterOwner, std::move(identifyingName))
    {
        this->stepped = true;
    }

    /// Sets the range of positions, 0..1 until then, and puts the parameter at its default, without a word to
    /// the owner.
    void setRange(int lowest, int highest, int initialPosition)
    {
        format.minimum = lowest;
        format.maximum = highest;
        format.initialPosition = initialPosition;
        current.store(initialPosition, std::memory_order_relaxed);
    }
    /// Names the positions, from the lowest up, and sets the range to them.
    void setItems(ItemNames items, T initial, int lowest = 0)
    {
        format.items = items;
        setRange(lowest, lowest + static_cast<int>(items.size()) - 1,
                 format.positionOfRaw(static_cast<int>(initial)));
    }

    /// The current raw value.
    T value() const noexcept REALTIME { return rawAt(current.load()); }

    float currentValue() const noexcept REALTIME override { return static_cast<float>(current.load()); }
    void setValue(float newValue, int flags) noexcept REALTIME override
    {
        const int taken = format.positionOf(newValue);
        if (newValue != newValue || taken == current.load())
            return;
        current.store(taken);
        this->announce(static_cast<float>(taken), flags);
    }
    void deliverValue(float newValue) noexcept REALTIME override
    {
        const int raw = format.rawOf(format.positionOf(newValue));
        this->deliver(static_cast<T>(raw), static_cast<float>(raw));
    }

    float minimumValue() const noexcept REALTIME override { return static_cast<float>(format.minimum); }
    float maximumValue() const noexcept REALTIME override { return static_cast<float>(format.maximum); }
    float defaultValue() const noexcept REALTIME override
    {
        return static_cast<float>(format.initialPosition);
    }

    float valueToSignal(float parameterValue) const noexcept REALTIME override
    {
        return static_cast<float>(format.rawOf(format.positionOf(parameterValue)));
    }
    float signalToValue(float signal) const noexcept REALTIME override
    {
        return static_cast<float>(format.positionOfRaw(static_cast<int>(signal)));
    }
    float valueToNormal(float parameterValue) const noexcept REALTIME override
    {
        return format.toNormal(parameterValue);
    }
    float normalToValue(float normal) const noexcept REALTIME override { return format.fromNormal(normal); }

    std::string valueText(float parameterValue) const override { return format.text(parameterValue); }
    std::string shortText(float parameterValue, std::size_t maxChars) const override
    {
        return format.shortText(parameterValue, maxChars);
    }
    std::optional<float> parseText(std::string_view text) const override { return format.parse(text); }
    bool hasItemNames() const noexcept override { return !format.items.empty(); }
    bool isNumeric() const noexcept override { return format.items.empty(); }

    float valueToNormalForVersion(float parameterValue, int version) const noexcept override
    {
        return format.toNormalForVersion(parameterValue, version);
    }
    std::optional<float> normalToValueForVersion(float normal, int version) const noexcept override
    {
        return format.fromNormalForVersion(normal, version);
    }
    int limitForVersion(int version) const noexcept override { return format.limitForVersion(version); }

    IndexedValueFormat format;

private:
    T rawAt(int place) const noexcept REALTIME { return static_cast<T>(format.rawOf(place)); }

    std::atomic<int> current{0};  // written and read by both threads; each value stands for itself
};
