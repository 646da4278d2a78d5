#pragma once

#include "core/GenericPlugin.h"
#include "modulation/ModulationMatrixOwner.h"
#include "product/SordelinParameters.h"

/// The product's main-thread half.
class SordelinPlugin : public GenericPlugin, public ModulationMatrixOwner, public SordelinParameters {
public:
    SordelinPlugin();
};
