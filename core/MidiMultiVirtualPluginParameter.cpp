#include "core/MidiMultiVirtualPluginParameter.h"

#include "foundation/Tolerance.h"
#include "parameters/AbstractPluginParameter.h"

#include <algorithm>

void MidiMultiVirtualPluginParameter::addParameter(AbstractPluginParameter& parameter)
{
    parameters.push_back(&parameter);
    lastOffsets.push_back(0.0f);
    offsets.push_back(0.0f);
}

void MidiMultiVirtualPluginParameter::setNormalised(float value) noexcept
{
    noticeMoves();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const float normal = std::clamp(value + offsets[i], 0.0f, 1.0f);
        parameters[i]->setValue(parameters[i]->normalToValue(normal), announceChange);
    }
    const float middle = mean();
    for (std::size_t i = 0; i < parameters.size(); ++i)
        lastOffsets[i] = normalAt(i) - middle;
}

void MidiMultiVirtualPluginParameter::noticeMoves() noexcept
{
    const float middle = mean();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const float distance = normalAt(i) - middle;
        if (!isNear(distance, lastOffsets[i]))
            offsets[i] = distance;
    }
}

float MidiMultiVirtualPluginParameter::normalAt(std::size_t i) const noexcept
{
    return parameters[i]->valueToNormal(parameters[i]->currentValue());
}

float MidiMultiVirtualPluginParameter::mean() const noexcept
{
    float sum = 0.0f;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        sum += normalAt(i);
    return sum / static_cast<float>(parameters.size());
}
