#pragma once

#include "parameters/FloatPluginParameter.h"
#include "parameters/ParameterSetList.h"

/// A pad whose two axes are modulation sources.
class XYParameterSet : public PluginParameterSet {
public:
    /// @param controller  from 0
    XYParameterSet(GenericParameterOwner& owner, int controller);
    void initialise() override;

    FloatPluginParameter horizontal;
    FloatPluginParameter vertical;
};

class XYParameterSetList : public ParameterSetList<XYParameterSet> {
public:
    explicit XYParameterSetList(GenericParameterOwner& owner);
};
