#pragma once

#include "abi/Clap.h"

#include <cstdint>

/// The transport of a song that plays from its start at one tempo, in 4/4. Thread: any.
class TransportClock {
public:
    /// @param tempoBpm    quarter notes per minute, above 0
    /// @param sampleRate  Hz
    TransportClock(double tempoBpm, double sampleRate) noexcept;

    /// The record for a block that begins `frame` frames after the song's start.
    clap_event_transport_t at(std::int64_t frame) const noexcept;

private:
    double tempo;  // quarter notes per minute
    double framesPerSecond;
};
