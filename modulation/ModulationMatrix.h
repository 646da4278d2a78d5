#pragma once

#include "modulation/ModulationConfiguration.h"
#include "wave/FloatParameterSource.h"

#include <memory>
#include <vector>

/// The signals of the parameters that can be modulated, by target id. Thread: audio, but for construction and
/// wiring.
class ModulationMatrix {
public:
    /// Joins the signals of two targets, and keeps its own in step with them.
    class SecondaryTarget {
    public:
        virtual ~SecondaryTarget() = default;
        /// The parameter's signal of one of the targets has moved.
        virtual void baseValueChanged() noexcept REALTIME = 0;
    };

    /// A parameter that can be modulated.
    class Target {
    public:
        Target(wave::Environment& environment, const ModulationRange& targetRange);

        /// The parameter's signal has become `signal`: the base ramps to it.
        void setParameterSignal(float signal) noexcept REALTIME;
        /// As the parameter delivered it last.
        float parameterSignal() const noexcept REALTIME { return lastSignal; }

        const ModulationRange& range;
        FloatParameter base;
        FloatParameterForwarder forwarder;
        SecondaryTarget* changeListener = nullptr;  // not owned; told after the base has moved

    private:
        float lastSignal = 0.0f;
    };

    /// @param modulationConfiguration  outlives the matrix, and stays as it is
    ModulationMatrix(wave::Environment& environment, const ModulationConfiguration& modulationConfiguration);
    ModulationMatrix(const ModulationMatrix&) = delete;
    ModulationMatrix& operator=(const ModulationMatrix&) = delete;

    /// @param id  0..targetCount - 1
    Target& target(int id) noexcept REALTIME { return *targets[static_cast<std::size_t>(id)]; }
    /// What the graph reads for a target. Never null.
    wave::Producer* producerForTarget(int id) noexcept REALTIME { return &target(id).forwarder; }

private:
    std::vector<std::unique_ptr<Target>> targets;
};
