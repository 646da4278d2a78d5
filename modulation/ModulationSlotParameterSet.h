#pragma once

#include "modulation/ModulationSlotParameters.h"
#include "modulation/ModulationTargetParameter.h"
#include "modulation/TargetParameterSetList.h"
#include "parameters/IndexedPluginParameter.h"

/// A slot of the modulation matrix: which source moves which target, and how far. Its level is a target
/// itself.
class ModulationSlotParameterSet : public PluginParameterSet {
public:
    /// A setting of a slot, which it delivers to the slot of the matrix too. In a source and in a target
    /// position 0 is no connection, and position n the id n - 1.
    template <class T>
    class Parameter : public IndexedPluginParameter<T> {
    public:
        Parameter(GenericParameterOwner* parameterOwner, std::string identifyingName,
                  ModulationMatrixOwner& matrixOwner, int slotNumber)
            : IndexedPluginParameter<T>(parameterOwner, std::move(identifyingName)),
              modulation(matrixOwner),
              slot(slotNumber)
        {}
        void deliverValue(float newValue) noexcept REALTIME override
        {
            IndexedPluginParameter<T>::deliverValue(newValue);
            if (modulation.matrix)
                deliverTo(*modulation.matrix, slot, this->format.rawOf(this->format.positionOf(newValue)));
        }

    private:
        virtual void deliverTo(ModulationMatrix& matrix, int slotNumber, int raw) noexcept REALTIME = 0;

        ModulationMatrixOwner& modulation;
        const int slot;
    };
    class SourceParameter : public Parameter<int> {
        using Parameter::Parameter;
        void deliverTo(ModulationMatrix& matrix, int slotNumber, int raw) noexcept REALTIME override;
    };
    class TargetParameter : public Parameter<int> {
        using Parameter::Parameter;
        void deliverTo(ModulationMatrix& matrix, int slotNumber, int raw) noexcept REALTIME override;
    };
    class BypassParameter : public Parameter<bool> {
        using Parameter::Parameter;
        void deliverTo(ModulationMatrix& matrix, int slotNumber, int raw) noexcept REALTIME override;
    };
    class InvertParameter : public Parameter<bool> {
        using Parameter::Parameter;
        void deliverTo(ModulationMatrix& matrix, int slotNumber, int raw) noexcept REALTIME override;
    };

    /// @param slot  from 0
    ModulationSlotParameterSet(GenericParameterOwner& owner, const ModulationSlotParameters& shared,
                               int slot);
    void initialise() override;

    SourceParameter source;
    ModulationTargetParameter level;
    BypassParameter bypassed;
    InvertParameter inverted;
    TargetParameter target;

private:
    const ModulationSlotParameters& slots;
};

class ModulationSlotParameterSetList : public TargetParameterSetList<ModulationSlotParameterSet> {
public:
    ModulationSlotParameterSetList(GenericParameterOwner& owner, const ModulationSlotParameters& shared,
                                   int slotCount);
};
