#pragma once

#include "modulation/ModulationMatrixOwner.h"
#include "parameters/ItemList.h"

/// What the parameters of all slots share. It outlives them.
class ModulationSlotParameters {
public:
    /// @param firstTarget     the target id of the first slot's level
    /// @param sources,targets  the names of the sources and targets, in the order of their ids, parted by
    /// commas
    ModulationSlotParameters(ModulationMatrixOwner& matrixOwner, int firstTarget, const std::string& sources,
                             const std::string& targets);

    ModulationMatrixOwner& owner;
    const int firstSlotTarget;
    // Position 0 stands for no connection, position n for the id n - 1.
    const ItemList sourceNames;
    const ItemList targetNames;
};
