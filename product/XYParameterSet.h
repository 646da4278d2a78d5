#pragma once

#include "modulation/SourceParameterSetList.h"
#include "parameters/FloatPluginParameter.h"

/// A pad whose two axes are modulation sources.
class XYParameterSet : public PluginParameterSet {
public:
    /// @param controller  from 0
    XYParameterSet(GenericParameterOwner& owner, int controller);
    void initialise() override;

    FloatPluginParameter horizontal;
    FloatPluginParameter vertical;
};

class XYParameterSetList : public SourceParameterSetList<XYParameterSet> {
public:
    XYParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation);
};
