#pragma once

#include "foundation/Property.h"
#include "product/SordelinTypes.h"
#include "wave/FloatParameterSource.h"

/// The time signal of a delay line in milliseconds: its own time, or a note of the song times the offset.
/// Thread: audio.
class DelayTimeController : public wave::Producer, public PropertyOwner {
public:
    /// @param timeSignal    milliseconds
    /// @param offsetSignal  factor on a note's length
    DelayTimeController(wave::Environment& owner, wave::Producer& timeSignal, wave::Producer& offsetSignal);

    /// @param newTempo  beats per minute; 0 is no tempo
    void tempoChanged(float newTempo) noexcept REALTIME;
    void propertyChanged(AbstractProperty& property) override;

    Property<DelaySync> sync;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    void updateSyncTime() noexcept REALTIME;

    FloatParameterSource syncTime;  // milliseconds, before the offset
    wave::Producer& time;
    wave::Producer& offset;
    float tempo = 120.0f;
};
