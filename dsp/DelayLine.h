#pragma once

#include "dsp/DelayLineBase.h"
#include "dsp/DelayTimeSmoother.h"
#include "dsp/StretchReader.h"
#include "foundation/Property.h"
#include "wave/FloatParameterSource.h"

/// One channel of delay whose time may change at every sample, up to 5 s. Thread: audio.
class DelayLine : public DelayLineBase, public PropertyOwner {
public:
    /// The unit of the time signal.
    enum class DelayInterpretation { Milliseconds, Samples };

    /// What a change of the time does. Once the time has settled all of them read alike.
    enum class ReadType {
        Tape,       // the head slides: the pitch bends
        Stretch,    // two heads exchanged every 85 ms: the pitch stays
        Crossfade,  // one fade of 200 ms to the new place
        Allpass,    // as Tape, through an all-pass instead of on straight lines
    };

    explicit DelayLine(wave::Environment& owner);

    void reset() noexcept REALTIME override;
    void propertyChanged(AbstractProperty& property) override;

    FloatParameterBus delayTime;
    Property<DelayInterpretation> interpretation;
    Property<ReadType> readType;
    Property<bool> smoothing;  // whether the time is chased, or followed at once

protected:
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;
    void cleared() noexcept REALTIME override;

private:
    float samplesPerUnit() const noexcept REALTIME;
    int wholeSamples(float time) const noexcept REALTIME;
    bool isSettled(int delaySamples) const noexcept REALTIME;
    void followReadType() noexcept REALTIME;
    void buildDelays(const wave::Block& time, int count) noexcept REALTIME;
    void readMoving(ReadType type, float* out, int count) noexcept REALTIME;
    void fadeFromOldType(float* out, int count) noexcept REALTIME;

    DelayTimeSmoother smoother;
    StretchReader stretch;
    float allpassState = 0.0f;
    // A read type chosen while the time moves takes over in 20 ms: the old one may read somewhere else.
    bool moving = false;
    ReadType activeType = ReadType::Tape;
    ReadType fadingType = ReadType::Tape;
    int fadePosition = 0;  // samples
    int fadeLength = 0;    // samples
    wave::Block fadingBlock;
};
