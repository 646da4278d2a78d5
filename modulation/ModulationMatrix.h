#pragma once

#include "modulation/ModulationConfiguration.h"
#include "modulation/ModulationSlot.h"
#include "wave/FloatParameterSource.h"

#include <memory>
#include <vector>

class GlobalModulationProducer;

/// Connects sources to the parameters that can be modulated, through slots:
///
///   target = parameter + sum over its slots of source * level * depth, within the target's limits
///
/// The level of a slot is a target too, so that a source can say how far another one reaches. A slot whose
/// target its own signal depends on would close a circle: it stays off until the circle is broken.
/// Thread: audio, but for construction and wiring. Nothing is allocated after construction.
class ModulationMatrix {
public:
    /// Joins the signals of two targets, and keeps its own in step with them.
    class SecondaryTarget {
    public:
        virtual ~SecondaryTarget() = default;
        /// The parameter's signal of one of the targets has moved.
        virtual void baseValueChanged() noexcept REALTIME = 0;
    };

    /// A parameter that can be modulated. Where it is a slot's level it is scaled by the depth of the slot,
    /// which is negative for an inverted one.
    class Target {
    public:
        // With all slots in use it is the memory touched that costs.
        static constexpr std::size_t cacheLine = 64;

        /// @param slotCount  the most slots that can point here
        Target(wave::Environment& environment, const ModulationRange& targetRange, int slotCount);

        /// The parameter's signal has become `signal`: the base ramps to it.
        void setParameterSignal(float signal) noexcept REALTIME;
        /// As the parameter delivered it last, without the scale.
        float parameterSignal() const noexcept REALTIME { return lastSignal; }

        /// Scales the base and its limits, at once.
        void setScale(float newScale) noexcept REALTIME;
        float scale() const noexcept REALTIME { return signalScale; }
        /// The limits of the base and of the modulated signal.
        float lower() const noexcept REALTIME { return base.lower(); }
        float upper() const noexcept REALTIME { return base.upper(); }
        /// The change that a source value of 1 makes here at a slot level of 1.
        float depthFor(ModulationSource::Kind kind) const noexcept REALTIME
        {
            return range.depthFor(kind) * signalScale;
        }
        /// Whether a slot reaches the target at present.
        bool isModulated() const noexcept REALTIME { return firstActive != nullptr; }
        /// A slot has come, gone or changed its state: links the active ones anew.
        void slotsChanged() noexcept REALTIME;

        const ModulationRange& range;
        ModulationSlot* firstActive = nullptr;
        std::vector<ModulationSlot*> slots;  // that point here, in the order in which they were connected
        alignas(cacheLine) FloatParameter base;
        FloatParameterForwarder forwarder;
        SecondaryTarget* changeListener = nullptr;  // not owned; told after the base has moved
        ModulationSlot* levelOf = nullptr;          // the slot whose level this is, if it is one

    private:
        void updateLimits() noexcept REALTIME;

        float lastSignal = 0.0f;
        float signalScale = 1.0f;
    };

    class Controller;
    class InternalController;

    /// @param modulationConfiguration  outlives the matrix; only `setSourceKind` changes it from now on
    ModulationMatrix(wave::Environment& environment, ModulationConfiguration& modulationConfiguration);
    ModulationMatrix(const ModulationMatrix&) = delete;
    ModulationMatrix& operator=(const ModulationMatrix&) = delete;
    ~ModulationMatrix();

    int sourceCount() const noexcept REALTIME { return static_cast<int>(sources.size()); }
    int targetCount() const noexcept REALTIME { return static_cast<int>(targets.size()); }
    /// @param id  0..targetCount() - 1
    Target& target(int id) noexcept REALTIME { return *targets[static_cast<std::size_t>(id)]; }
    /// What the graph reads for a target. Never null, and the same for ever.
    wave::Producer* producerForTarget(int id) noexcept REALTIME;

    /// Says which signal a source is; without one its slots stay off. Not owned. Thread: main, before values
    /// are delivered.
    void setSource(int source, wave::Producer* producer);
    bool sourceIsGlobal(int source) const noexcept REALTIME
    {
        return sources[static_cast<std::size_t>(source)] != nullptr;
    }
    /// Slots of the source take on the depths of its new kind at once.
    void setSourceKind(int source, ModulationSource::Kind kind) noexcept REALTIME;

    const ModulationSlot& slot(int index) const noexcept REALTIME
    {
        return slots[static_cast<std::size_t>(index)];
    }
    int slotCount() const noexcept REALTIME { return static_cast<int>(slots.size()); }
    /// What a slot is told. A connection, an inversion and a bypass act at once; a level ramps.
    /// @param source,newTarget  an id, or -1 for none
    void setSlotSource(int index, int source) noexcept REALTIME;
    void setSlotTarget(int index, int newTarget) noexcept REALTIME;
    void setSlotBypassed(int index, bool bypassed) noexcept REALTIME;
    void setSlotInverted(int index, bool inverted) noexcept REALTIME;
    void setSlotLevel(int index, float level) noexcept REALTIME;

    /// The slots as the rest of the system sees them.
    Controller& controller() noexcept REALTIME;

private:
    ModulationSlot& slotAt(int index) noexcept REALTIME { return slots[static_cast<std::size_t>(index)]; }
    void slotsChanged(int changedTarget) noexcept REALTIME;
    void updateSlot(ModulationSlot& updated) noexcept REALTIME;
    void refreshSlot(const ModulationSlot& refreshed) noexcept REALTIME;
    void reviveSlots(const ModulationSlot& changed) noexcept REALTIME;

    ModulationConfiguration& configuration;
    std::vector<std::unique_ptr<Target>> targets;
    std::vector<std::unique_ptr<GlobalModulationProducer>> producers;  // by target id
    std::vector<wave::Producer*> sources;                              // by source id
    std::vector<ModulationSlot> slots;
    std::unique_ptr<InternalController> internalController;
};
