#include "clap_host/ClapEvent.h"

namespace {

template <typename Event>
clap_event_header_t headerOf(std::uint32_t time, std::uint16_t type) noexcept
{
    return {sizeof(Event), time, CLAP_CORE_EVENT_SPACE_ID, type, 0};
}

ClapEvent noteEvent(std::uint32_t time, std::uint16_t type, int channel, int key, double velocity) noexcept
{
    ClapEvent event{};
    event.note = {};
    event.note.header = headerOf<clap_event_note_t>(time, type);
    event.note.note_id = -1;
    event.note.channel = static_cast<std::int16_t>(channel);
    event.note.key = static_cast<std::int16_t>(key);
    event.note.velocity = velocity;
    return event;
}

}  // namespace

ClapEvent parameterEvent(std::uint32_t time, clap_id id, double value) noexcept
{
    ClapEvent event{};
    event.parameter = {};
    event.parameter.header = headerOf<clap_event_param_value_t>(time, CLAP_EVENT_PARAM_VALUE);
    event.parameter.param_id = id;
    event.parameter.note_id = -1;
    event.parameter.port_index = -1;
    event.parameter.channel = -1;
    event.parameter.key = -1;
    event.parameter.value = value;
    return event;
}

ClapEvent noteOnEvent(std::uint32_t time, int channel, int key, double velocity) noexcept
{
    return noteEvent(time, CLAP_EVENT_NOTE_ON, channel, key, velocity);
}

ClapEvent noteOffEvent(std::uint32_t time, int channel, int key, double velocity) noexcept
{
    return noteEvent(time, CLAP_EVENT_NOTE_OFF, channel, key, velocity);
}

ClapEvent midiEvent(std::uint32_t time, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept
{
    ClapEvent event{};
    event.midi = {};
    event.midi.header = headerOf<clap_event_midi_t>(time, CLAP_EVENT_MIDI);
    event.midi.data[0] = status;
    event.midi.data[1] = data1;
    event.midi.data[2] = data2;
    return event;
}
