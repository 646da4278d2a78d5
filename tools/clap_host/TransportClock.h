#pragma once

#include "abi/Clap.h"

#include <cstdint>

/// The transport of a song that plays at one tempo, in 4/4. Thread: any.
class TransportClock {
public:
    /// @param tempoBpm    quarter notes per minute, above 0
    /// @param sampleRate  Hz
    /// @param startBeats  where in the song it begins to play, in quarter notes
    TransportClock(double tempoBpm, double sampleRate, double startBeats = 0.0) noexcept;

    /// The record for a block that begins `frame` frames after the song began to play.
    clap_event_transport_t at(std::int64_t frame) const noexcept;

private:
    double tempo;  // quarter notes per minute
    double framesPerSecond;
    double firstBeat;
};
