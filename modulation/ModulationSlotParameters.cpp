#include "modulation/ModulationSlotParameters.h"

ModulationSlotParameters::ModulationSlotParameters(ModulationMatrixOwner& matrixOwner, int firstTarget,
                                                   const std::string& sources, const std::string& targets)
    : owner(matrixOwner),
      firstSlotTarget(firstTarget),
      sourceNames("< Source >," + sources),
      targetNames("< Target >," + targets)
{}
