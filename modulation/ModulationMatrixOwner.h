#pragma once

#include "modulation/ModulationConfiguration.h"

#include <memory>

class ModMatrixParamController;
class ModulationMatrix;
class ModulationSlotParameterSetList;

/// A half of a plug-in with modulation. Only the audio half has a matrix, which it makes once the parameter
/// tree has filled the configuration.
class ModulationMatrixOwner {
public:
    ModulationMatrixOwner();
    ModulationMatrixOwner(const ModulationMatrixOwner&) = delete;
    ModulationMatrixOwner& operator=(const ModulationMatrixOwner&) = delete;
    virtual ~ModulationMatrixOwner();

    /// The slots by their parameters. Made on first use, once the tree is initialised. Thread: main.
    ModMatrixParamController& slotController();

    ModulationConfiguration configuration;
    ModulationMatrix* matrix = nullptr;                  // not owned; null in the main-thread half
    ModulationSlotParameterSetList* slotList = nullptr;  // not owned; set when the tree is initialised

private:
    std::unique_ptr<ModMatrixParamController> controller;
};
