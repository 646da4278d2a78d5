#pragma once

#include "foundation/Property.h"
#include "wave/FloatParameterSource.h"

#include <cstdint>

class XLFO;

/// The rate of an XLFO: its own frequency, or a cycle of so many whole notes of the song, times an offset.
/// A rate that is locked to the song also locks the phase, so that the cycle is always where the song has it.
/// Thread: audio.
class XLFOFreqController : public wave::Producer {
public:
    /// The length of a cycle in whole notes.
    enum class SyncMode {
        Free,
        Notes16,
        Notes8,
        Notes4,
        Notes2,
        Notes1,
        Half,
        Quarter,
        Eighth,
        Sixteenth,
        ThirtySecond,
        SixtyFourth
    };

    /// Makes the XLFO read its rate from here.
    /// @param frequencySignal  Hz; the rate of a free cycle
    XLFOFreqController(wave::Environment& owner, XLFO& lockedXlfo, wave::Producer& frequencySignal);

    /// Once per block of the host: where the song is at the block's first sample.
    /// @param newTempo  beats per minute; a beat is a quarter note
    /// @param beats     from the start of the song
    void transportChanged(float newTempo, double beats) noexcept REALTIME;

    FloatParameterBus offset;  // 0.5..2, a factor on the rate of a locked cycle; a free one ignores it
    Property<SyncMode> syncMode;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    void lockPhase(float presentOffset) noexcept REALTIME;

    XLFO& xlfo;
    wave::Producer& frequencyTarget;
    FloatParameterSource syncFrequency;  // Hz, before the offset
    float tempo = 0.0f;                  // beats per minute
    double position = 0.0;               // beats, at the clock's `positionTime`
    std::uint64_t positionTime = 0;      // samples
    bool transportPending = false;       // the rate and the phase haven't been set by that yet
    double anchorPosition;               // beats; the last position where the offset wasn't moving
    float anchorOffset = 0.0f;           // and the offset there
};
