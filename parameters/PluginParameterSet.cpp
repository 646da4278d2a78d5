#include "parameters/PluginParameterSet.h"

#include "parameters/AbstractPluginParameter.h"

#include <utility>

PluginParameterSet::PluginParameterSet(GenericParameterOwner& owner, std::string setName)
    : PluginParameterSet(owner, std::move(setName), Grouping::Own)
{}

PluginParameterSet::PluginParameterSet(GenericParameterOwner& owner, std::string setName, Grouping grouping)
    : parent(owner),
      ownName(std::move(setName)),
      group(grouping == Grouping::Own ? owner.registerGroup(ownName) : owner.groupIndex())
{}

void PluginParameterSet::copyValuesFrom(const PluginParameterSet& other)
{
    for (std::size_t i = 0; i < parameters.size(); ++i)
        parameters[i]->setValue(other.parameters[i]->currentValue(), announceChange);
}

void PluginParameterSet::resetToDefaults()
{
    for (AbstractPluginParameter* parameter : parameters)
        parameter->setValue(parameter->defaultValue(), announceChange);
}

int PluginParameterSet::addParameter(AbstractPluginParameter& parameter)
{
    parameters.push_back(&parameter);
    return parent.addParameter(parameter);
}

void PluginParameterSet::addAlias(AbstractPluginParameter& parameter, std::string_view alias)
{
    parent.addAlias(parameter, alias);
}
