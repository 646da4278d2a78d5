#pragma once

#include "modulation/ModulationMatrixOwner.h"
#include "parameters/AbstractParameterSetList.h"

#include <vector>

/// A list whose entries are modulation targets. A slot's target goes by number: when an entry goes, the slots
/// on its targets go with it, and those on the targets of the entries behind it follow them. Thread: main.
class AbstractTargetParameterSetList : public AbstractParameterSetList {
public:
    void removeSet(int i) override;

protected:
    /// @param firstTargetId  the id of the first entry's first target; the others follow
    AbstractTargetParameterSetList(GenericParameterOwner& listOwner, std::string_view listName,
                                   ModulationMatrixOwner& matrixOwner, int firstTargetId,
                                   int targetsPerEntry);

    /// Whether `removeSet` does anything.
    bool isRemovable(int i) const;

    ModulationMatrixOwner& modulationOwner;

private:
    int removeSlotsOnto(int i);
    void renumberTargets(int removed);

    const int firstTarget;
    const int targetsPerSet;
};
