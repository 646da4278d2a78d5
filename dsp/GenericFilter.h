#pragma once

#include "dsp/FilterUnit.h"
#include "foundation/Property.h"
#include "wave/Filter.h"
#include "wave/FloatParameterSource.h"

class ParallelFilterUnit;

/// A filter that works by itself on one channel.
class SingleFilterUnit : public FilterUnit {
public:
    using FilterUnit::FilterUnit;
    /// Filters `count` samples; `in` and `out` may not overlap.
    virtual void run(const FilterSignals& signals, const wave::Block& in, wave::Block& out,
                     int count) noexcept REALTIME = 0;
};

/// A filter as a processor wires it in. It gathers the signals that shape it, has a unit do the work, and
/// blends the result with its input. Thread: audio.
class GenericFilter : public wave::Filter, public PropertyOwner {
public:
    using Response = FilterResponse;
    using Slope = FilterSlope;

    explicit GenericFilter(wave::Environment& owner);
    ~GenericFilter() override;

    void reset() noexcept REALTIME override;

    Property<bool> autoMute;      // whether the gate counts
    FloatParameterBus frequency;  // log2 of Hz
    FloatParameterBus gain;       // linear, up to +36 dB
    FloatParameterBus mix;        // 0 the input, 1 the filtered signal
    FloatParameterBus peak;       // 0..1
    Property<Response> response;
    Property<Slope> slope;
    wave::Producer* gate = nullptr;  // 0..1

    /// Works as a lane of `unit`. Allocates nothing.
    void attachParallel(ParallelFilterUnit& unit) noexcept REALTIME;
    /// Works alone, through `unit`.
    void detachParallel(SingleFilterUnit& unit) noexcept REALTIME;

    // Called by the parallel unit.

    wave::Block& pullInput(int count) noexcept REALTIME;
    /// False if the filter is blended out and has no work to do.
    bool gather(int count, FilterSignals& signals) noexcept REALTIME;
    /// After `gather`: what the unit gives is what the filter shows, without a blend or a fade.
    bool passesWhole() const noexcept REALTIME;
    /// Shows the blend of the last `gather`.
    void finish(wave::Block& in, wave::Block& out, int count) noexcept REALTIME;

    void propertyChanged(AbstractProperty& property) override;

protected:
    /// The filter becomes another one from here on. What it gives jumps; the jump is faded out over 20 ms.
    void noteSwitch() noexcept REALTIME { switched = active; }
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;
    ParallelFilterUnit* parallelUnit() const noexcept REALTIME { return parallel; }

private:
    void gatherMix(int count) noexcept REALTIME;
    bool mixRestsAt(float value) const noexcept REALTIME;
    void smoothSwitch(wave::Block& out, int count) noexcept REALTIME;

    bool active = false;
    bool switched = false;
    float lastOutput = 0.0f;
    float jump = 0.0f;   // what is still to be faded out: at first, the step that the switch made
    int fadeLeft = 0;    // samples
    int fadeLength = 1;  // samples
    wave::Block* mixBlock = nullptr;  // null while the mix rests
    float restingMix = 1.0f;
    SingleFilterUnit* single = nullptr;
    ParallelFilterUnit* parallel = nullptr;
};
