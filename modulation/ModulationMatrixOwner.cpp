#include "modulation/ModulationMatrixOwner.h"

#include "modulation/ModMatrixParamController.h"

ModulationMatrixOwner::ModulationMatrixOwner() = default;

ModulationMatrixOwner::~ModulationMatrixOwner() = default;

ModMatrixParamController& ModulationMatrixOwner::slotController()
{
    if (!controller)
        controller = std::make_unique<ModMatrixParamController>(configuration, *slotList);
    return *controller;
}
