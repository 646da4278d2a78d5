#include "parameters/AbstractPluginParameter.h"

#include "foundation/Tolerance.h"

#include <utility>

AbstractPluginParameter::AbstractPluginParameter(GenericParameterOwner* parameterOwner,
                                                 std::string identifyingName)
    : name(identifyingName), parent(parameterOwner), identifier(std::move(identifyingName))
{
    if (parent)
        listIndex = parent->addParameter(*this);
}

float AbstractPluginParameter::rescale(float value, float oldReference, float newReference) const noexcept
{
    const float oldDisplay = valueToDisplay(oldReference);
    if (isNear(oldDisplay, 0.0f))
        return value;
    return displayToValue(valueToDisplay(value) * (valueToDisplay(newReference) / oldDisplay));
}

std::string AbstractPluginParameter::shortText(float value, std::size_t maxChars) const
{
    return valueText(value).substr(0, maxChars);
}

float AbstractPluginParameter::valueToNormalForVersion(float value, int) const noexcept
{
    return valueToNormal(value);
}

std::optional<float> AbstractPluginParameter::normalToValueForVersion(float normal, int) const noexcept
{
    return normalToValue(normal);
}

int AbstractPluginParameter::limitForVersion(int) const noexcept { return -1; }

void AbstractPluginParameter::announce(float value, int flags) noexcept
{
    if (parent)
        parent->parameterChanged(listIndex, value, flags);
}

void AbstractPluginParameter::tellListeners(float signalOrRaw) noexcept
{
    for (ParameterListener* listener : listeners)
        listener->parameterDelivered(*this, signalOrRaw);
}
