#include "parameters/ParameterCollection.h"

#include "parameters/AbstractPluginParameter.h"

#include <algorithm>

int ParameterCollection::add(AbstractPluginParameter& parameter)
{
    parameters.push_back(&parameter);
    return count() - 1;
}

void ParameterCollection::readValues(std::vector<float>& values) const
{
    values.clear();
    for (const AbstractPluginParameter* parameter : parameters)
        values.push_back(parameter->currentValue());
}

void ParameterCollection::writeValues(std::span<const float> values) const
{
    const std::size_t shared = std::min(values.size(), parameters.size());
    for (std::size_t i = 0; i < shared; ++i)
        parameters[i]->setValue(values[i], announceChange);
}
