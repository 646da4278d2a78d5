#include "core/NamedPluginInstance.h"

void NamedPluginInstance::joinInstances(GenericPluginInstanceList& instanceList)
{
    list = &instanceList;
    list->add(*this);
    updateInstanceName({});
}

void NamedPluginInstance::leaveInstances()
{
    list->remove(*this);
    list = nullptr;
}

int NamedPluginInstance::group()
{
    const ScopedLock scopedLock(*list);
    if (ownGroup == noGroup)
        ownGroup = list->newGroup();
    return ownGroup;
}

void NamedPluginInstance::restoreGroup(int number)
{
    const ScopedLock scopedLock(*list);
    if (number != ownGroup && list->claimGroup(number))
        ownGroup = number;
}

std::string NamedPluginInstance::displayName() const
{
    std::string track = autoName ? trackName() : std::string();
    return track.empty() ? ownName : track;
}

void NamedPluginInstance::setInstanceName(const std::string& text)
{
    const bool automatic = text.empty();
    const bool changesNamer = automatic != autoName;
    autoName = automatic;
    const bool changesName = updateInstanceName(text);
    if (changesNamer || changesName)
        instanceStateChanged();
}

void NamedPluginInstance::restoreInstanceName(bool automatic, const std::string& text)
{
    autoName = automatic;
    updateInstanceName(text);
}

bool NamedPluginInstance::updateInstanceName(const std::string& text)
{
    if (!autoName && (text.empty() || text == ownName))
        return false;
    {
        const ScopedLock scopedLock(*list);
        const std::string track = autoName ? trackName() : std::string();
        std::string name =
            autoName ? list->freeName(track.empty() ? baseInstanceName() : track, *this) : text;
        if (name == ownName)
            return false;
        ownName = std::move(name);
        list->sort();
    }
    instanceNameChanged();
    return true;
}
