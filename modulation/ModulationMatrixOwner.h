#pragma once

#include "modulation/ModulationConfiguration.h"

class ModulationMatrix;

/// A half of a plug-in with modulation. Only the audio half has a matrix, which it makes once the parameter
/// tree has filled the configuration.
class ModulationMatrixOwner {
public:
    ModulationMatrixOwner() = default;
    ModulationMatrixOwner(const ModulationMatrixOwner&) = delete;
    ModulationMatrixOwner& operator=(const ModulationMatrixOwner&) = delete;
    virtual ~ModulationMatrixOwner() = default;

    ModulationConfiguration configuration;
    ModulationMatrix* matrix = nullptr;  // not owned; null in the main-thread half
};
