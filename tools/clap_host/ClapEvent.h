#pragma once

#include "abi/Clap.h"

#include <cstdint>

/// Room for any event that this host sends or keeps.
union ClapEvent {
    clap_event_header_t header;
    clap_event_param_value_t parameter;
    clap_event_param_gesture_t gesture;
    clap_event_note_t note;
    clap_event_midi_t midi;
};

/// A parameter's value, in the parameter's own range, for all notes.
/// @param time  frames from the start of the block, here and below
ClapEvent parameterEvent(std::uint32_t time, clap_id id, double value) noexcept;

/// @param channel   0..15
/// @param key       0..127, 60 is middle C
/// @param velocity  0..1
ClapEvent noteOnEvent(std::uint32_t time, int channel, int key, double velocity) noexcept;
ClapEvent noteOffEvent(std::uint32_t time, int channel, int key, double velocity) noexcept;

/// Three bytes of MIDI 1.0, on port 0.
ClapEvent midiEvent(std::uint32_t time, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept;
