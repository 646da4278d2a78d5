#include "core/GenericPluginInstanceList.h"

#include "core/IGenericPluginInstance.h"
#include "foundation/TextCompare.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int highestGroup = std::numeric_limits<int>::max() - 1;

bool isBefore(const std::string& a, const std::string& b)
{
    const int natural = compareNatural(a, b);
    return natural != 0 ? natural < 0 : a < b;
}

/// For a search by name.
struct NameOrder {
    bool operator()(const IGenericPluginInstance* a, const std::string& b) const
    {
        return isBefore(a->instanceName(), b);
    }
    bool operator()(const IGenericPluginInstance* a, const IGenericPluginInstance* b) const
    {
        return isBefore(a->instanceName(), b->instanceName());
    }
};

}  // namespace

void GenericPluginInstanceList::add(IGenericPluginInstance& instance)
{
    const ScopedLock scopedLock(*this);
    instances.insert(instances.begin(), &instance);
    sort();
}

IGenericPluginInstance* GenericPluginInstanceList::find(const std::string& name)
{
    const ScopedLock scopedLock(*this);
    const auto place = std::lower_bound(instances.begin(), instances.end(), name, NameOrder());
    return place != instances.end() && (*place)->instanceName() == name ? *place : nullptr;
}

bool GenericPluginInstanceList::isGroupTaken(int number) const
{
    return std::ranges::any_of(instances,
                               [number](const auto* instance) { return instance->hasGroup(number); });
}

int GenericPluginInstanceList::newGroup()
{
    const ScopedLock scopedLock(*this);
    int given = nextGroup;
    // Taken ones come up only after the highest number there is, which a damaged project may have claimed.
    while (isGroupTaken(given))
        given = given == highestGroup ? 0 : given + 1;
    nextGroup = given == highestGroup ? 0 : given + 1;
    return given;
}

bool GenericPluginInstanceList::claimGroup(int number)
{
    const ScopedLock scopedLock(*this);
    if (number < 0 || number > highestGroup || isGroupTaken(number))
        return false;
    nextGroup = std::max(nextGroup, number == highestGroup ? 0 : number + 1);
    return true;
}

void GenericPluginInstanceList::sort()
{
    const ScopedLock scopedLock(*this);
    std::ranges::stable_sort(instances, NameOrder());
}

void GenericPluginInstanceList::remove(IGenericPluginInstance& instance)
{
    const ScopedLock scopedLock(*this);
    std::erase(instances, &instance);
}

std::string GenericPluginInstanceList::freeName(const std::string& base,
                                                const IGenericPluginInstance& asking) const
{
    // Not by `find`: of several instances with one name it may give the asking one.
    const auto isTaken = [&](const std::string& name) {
        return std::ranges::any_of(instances, [&](const IGenericPluginInstance* other) {
            return other != &asking && other->instanceName() == name;
        });
    };
    std::string name = base;
    for (int number = 2; isTaken(name); ++number)
        name.assign(base).append(" (").append(std::to_string(number)).append(")");
    return name;
}
