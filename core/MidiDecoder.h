#pragma once

#include "core/AbstractMusicEventReceiver.h"
#include "core/MidiMessage.h"

#include <array>

/// Turns MIDI bytes into calls of a receiver: first of its entry for all channels, then of the channel's own.
/// Thread: audio.
class MidiDecoder {
public:
    /// `eventReceiver` outlives this.
    explicit MidiDecoder(AbstractMusicEventReceiver& eventReceiver) : receiver(eventReceiver) {}

    /// Takes one whole message. One that begins with data, as of a running status, is dropped, and so is one
    /// whose data bytes are none.
    void decode(const MidiMessage& message) noexcept REALTIME;

private:
    void dispatch(int entry, const MidiMessage& message) noexcept REALTIME;
    void controlChange(int entry, int number, int raw) noexcept REALTIME;

    AbstractMusicEventReceiver& receiver;
    // The bank that each entry was sent last, 0..16383. It holds until the next one, over a reset too.
    std::array<int, AbstractMusicEventReceiver::entryCount> banks{};
};
