#pragma once

#include "modulation/ModulationMatrix.h"
#include "modulation/ModulationMatrixOwner.h"
#include "parameters/FloatPluginParameter.h"

#include <string>
#include <utility>

/// A parameter of the class `T` that can be modulated: it delivers its signal to a target of the matrix too.
template <class T>
class ModulationTargetParameterBase : public T {
public:
    ModulationTargetParameterBase(GenericParameterOwner* parameterOwner, std::string identifyingName,
                                  ModulationMatrixOwner& matrixOwner, int target)
        : T(parameterOwner, std::move(identifyingName)), modulation(matrixOwner), id(target)
    {}

    int targetId() const noexcept REALTIME { return id; }
    /// The signal to which modulation adds.
    virtual float modulationBase(float value) const noexcept REALTIME { return this->valueToSignal(value); }

    void deliverValue(float newValue) noexcept REALTIME override
    {
        T::deliverValue(newValue);
        if (modulation.matrix)
            modulation.matrix->target(id).setParameterSignal(modulationBase(newValue));
    }

private:
    ModulationMatrixOwner& modulation;
    const int id;
};

using ModulationTargetParameter = ModulationTargetParameterBase<FloatPluginParameter>;
