#pragma once

#include "parameters/IndexedPluginParameter.h"
#include "wave/FloatParameter.h"

#include <span>
#include <vector>

/// An indexed parameter whose positions stand for signal values, to which signals ramp.
template <class T>
class ToggleFloatPluginParameter : public IndexedPluginParameter<T> {
public:
    using IndexedPluginParameter<T>::IndexedPluginParameter;

    /// @param values  static; the signal of each position. Without them a position is its own signal.
    void setSignals(std::span<const float> values) { table = values; }
    /// Makes `signal` follow the delivered positions. Not owned. Thread: main, before values are delivered.
    void drive(FloatParameter& signal) { signals.push_back(&signal); }

    void deliverValue(float newValue) noexcept REALTIME override
    {
        IndexedPluginParameter<T>::deliverValue(newValue);
        const int position = this->format.positionOf(newValue);
        const auto place = static_cast<std::size_t>(position - this->format.minimum);
        const float target = place < table.size() ? table[place] : static_cast<float>(position);
        for (FloatParameter* signal : signals)
            signal->setValue(target, FloatParameter::automaticRamp);
    }

private:
    std::span<const float> table;
    std::vector<FloatParameter*> signals;
};
