#pragma once

#include "modulation/ModulationMatrix.h"
#include "product/XYParameterSet.h"

#include <memory>
#include <vector>

/// The axes of the XY controllers as modulation sources of -1..1, which ramp like any other parameter.
/// Thread: audio, but for construction.
class XYSources {
public:
    /// Makes the matrix read the axes, and the axes follow the parameters.
    XYSources(wave::Environment& environment, ModulationMatrix& matrix, XYParameterSetList& controllers);

    /// Where an axis stands, as 0..1. @param source  the id of one of its sources
    float displayValue(int source) noexcept REALTIME;

private:
    std::vector<std::unique_ptr<FloatParameterSource>> axes;  // by source id
};
