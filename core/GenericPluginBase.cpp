#include "core/GenericPluginBase.h"

#include <algorithm>

GenericPluginBase::GenericPluginBase() : groups{std::string()} {}

void GenericPluginBase::addAlias(AbstractPluginParameter& aliased, std::string_view alias)
{
    aliased.aliases.emplace_back(alias);
}

int GenericPluginBase::addResponder(ParameterResponder& responder)
{
    virtualMidiParameters.push_back(&responder);
    return static_cast<int>(virtualMidiParameters.size()) - 1;
}

int GenericPluginBase::registerGroup(std::string_view groupName)
{
    const auto found = std::find(groups.begin(), groups.end(), groupName);
    if (found != groups.end())
        return static_cast<int>(found - groups.begin());
    groups.emplace_back(groupName);
    return static_cast<int>(groups.size()) - 1;
}
