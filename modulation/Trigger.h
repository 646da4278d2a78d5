#pragma once

#include "foundation/Property.h"
#include "wave/FloatParameterSource.h"
#include "wave/Producer.h"

#include <memory>
#include <vector>

/// Watches a level, and reports when it rises above a threshold and when it has stayed below half of that, 6
/// dB lower, for a while without a break. Thread: audio, but for construction and `domain`.
class Trigger : public wave::Output, public PropertyOwner {
public:
    enum class GainChangeDomain { Gain, Decibels };
    enum class EventKind { End, Start };
    struct Event {
        EventKind kind;
        int position;  // samples from the start of the block
    };

    explicit Trigger(wave::Environment& owner);

    /// Looks at the level of this sub-block. A second call in the same one does nothing.
    void run(int count) noexcept REALTIME;
    /// What the last run found, in the order of time.
    const std::vector<Event>& events() const noexcept REALTIME { return found; }

    void propertyChanged(AbstractProperty& property) override;

    /// How long the level must stay down, in milliseconds. It counts at the sample rate of the moment at
    /// which it is set.
    Property<float> holdMs{15.0f, this};
    /// Off, it doesn't look; what it last saw stays.
    Property<bool> enabled{true};
    FloatParameterBus threshold;  // gain 0..1, or dB -180..0, as `domain` says
    Property<GainChangeDomain> domain{GainChangeDomain::Gain, this};  // thread: main

private:
    const wave::Block& thresholds(int count) noexcept REALTIME;
    void look(float level, float limit, int position) noexcept REALTIME;

    wave::Environment& environment;
    std::unique_ptr<wave::Block> thresholdGain;  // only where the threshold is in dB
    int belowCount = 0;                          // samples for which the level has stayed down
    int holdSamples = 1;
    std::uint32_t lastGeneration = 0;
    std::vector<Event> found;
    bool active = false;  // the level has risen and not yet fallen
};
