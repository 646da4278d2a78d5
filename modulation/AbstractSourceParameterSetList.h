#pragma once

#include "modulation/AbstractTargetParameterSetList.h"

/// A list whose entries are modulation sources, with or without targets among their parameters. When an entry
/// goes, the slots that use it go with it, and the slots of the entries behind it follow them. Thread: main.
class AbstractSourceParameterSetList : public AbstractTargetParameterSetList {
public:
    void removeSet(int i) override;
    /// Removes the entries that no slot uses.
    void trim();

protected:
    struct Numbers {
        int first;   // id of the first entry's first one; the others follow
        int perSet;  // 0 for none
    };
    AbstractSourceParameterSetList(GenericParameterOwner& listOwner, std::string_view listName,
                                   ModulationMatrixOwner& matrixOwner, Numbers sources, Numbers targets);

private:
    int firstSourceOf(int i) const { return firstSource + sourcesPerSet * i; }
    void renumberSources(int removed);

    const int firstSource;
    const int sourcesPerSet;
};
