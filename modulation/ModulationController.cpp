#include "modulation/ModulationController.h"

#include <algorithm>

namespace {

template <class Predicate>
std::vector<int> slotsWhere(int slotCount, Predicate matches)
{
    std::vector<int> found;
    for (int slot = 0; slot < slotCount; ++slot)
        if (matches(slot))
            found.push_back(slot);
    return found;
}

bool isWithin(int id, int first, int count) { return id >= first && id < first + count; }

}  // namespace

ModulationMatrix::Controller::Controller(const ModulationConfiguration& modulationConfiguration)
    : configuration(modulationConfiguration), visited(configuration.targetCount())
{}

bool ModulationMatrix::Controller::isValid(int slot) noexcept
{
    if (source(slot) < 0 || target(slot) < 0 || isBypassed(slot))
        return false;
    visited.clear();
    visitSlot(slot);
    return !visited.contains(target(slot));
}

void ModulationMatrix::Controller::visitSlot(int slot) noexcept
{
    visit(levelTarget(slot));
    const int used = source(slot);
    if (used < 0)
        return;
    for (const int own : configuration.sources[static_cast<std::size_t>(used)].ownTargets)
        visit(own);
}

void ModulationMatrix::Controller::visit(int target) noexcept
{
    if (visited.insert(target))
        visitSlotsOf(target);
}

std::vector<int> ModulationMatrix::Controller::slotsOfSources(int first, int count) const
{
    return slotsWhere(slotCount(), [&](int slot) { return isWithin(source(slot), first, count); });
}

std::vector<int> ModulationMatrix::Controller::slotsOfTargetRange(int first, int count) const
{
    return slotsWhere(slotCount(), [&](int slot) { return isWithin(target(slot), first, count); });
}

std::vector<int> ModulationMatrix::Controller::slotsOfTargets(const std::vector<int>& ids) const
{
    return slotsWhere(slotCount(),
                      [&](int slot) { return std::find(ids.begin(), ids.end(), target(slot)) != ids.end(); });
}

std::vector<int> ModulationMatrix::Controller::slotsMatching(int sourceKind, int rangeIndex) const
{
    return slotsWhere(slotCount(), [&](int slot) {
        if (source(slot) < 0 || target(slot) < 0)
            return false;
        const ModulationSource& used = configuration.sources[static_cast<std::size_t>(source(slot))];
        const int range = configuration.targetRanges[static_cast<std::size_t>(target(slot))];
        return (sourceKind < 0 || used.kind == sourceKind) && (rangeIndex < 0 || range == rangeIndex);
    });
}
