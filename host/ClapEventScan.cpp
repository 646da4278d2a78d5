#include "host/ClapEventScan.h"

#include <algorithm>

namespace {

/// The event as a `T`, or null if the record is too short to be one.
template <class T>
const T* as(const clap_event_header_t& event) noexcept
{
    return event.size >= sizeof(T) ? reinterpret_cast<const T*>(&event) : nullptr;
}

bool isNote(const clap_event_note_t* note) noexcept { return note && note->key >= 0 && note->key <= 127; }

std::uint8_t velocityByte(double velocity, double least) noexcept
{
    const double scaled = velocity * 127.0;
    return static_cast<std::uint8_t>(scaled >= least ? std::min(scaled, 127.0) : least);
}

std::uint8_t channelStatus(std::uint8_t status, std::int16_t channel) noexcept
{
    return static_cast<std::uint8_t>(status | (channel & 15));
}

}  // namespace

ClapEventScan::ClapEventScan(const clap_input_events_t* events, Sink& sink) noexcept
    : list(events), target(sink), count(events ? events->size(events) : 0)
{}

std::uint32_t ClapEventScan::advance(std::uint32_t position, std::uint32_t end) noexcept
{
    for (; next < count; ++next) {
        const clap_event_header_t* event = list->get(list, next);
        if (!event || event->space_id != CLAP_CORE_EVENT_SPACE_ID)
            continue;
        if (event->type != CLAP_EVENT_PARAM_VALUE) {
            handMessage(*event, position);
            continue;
        }
        if (event->time > position && event->time < end)
            return event->time;
        const auto* change = as<clap_event_param_value_t>(*event);
        if (change && event->time == position)
            target.applyParameter(change->param_id, change->value);
    }
    return end;
}

void ClapEventScan::applyAll() noexcept
{
    for (; next < count; ++next) {
        const clap_event_header_t* event = list->get(list, next);
        if (!event || event->space_id != CLAP_CORE_EVENT_SPACE_ID)
            continue;
        const auto* change =
            event->type == CLAP_EVENT_PARAM_VALUE ? as<clap_event_param_value_t>(*event) : nullptr;
        if (change)
            target.applyParameter(change->param_id, change->value);
        else
            handMessage(*event, event->time);
    }
}

void ClapEventScan::handMessage(const clap_event_header_t& event, std::uint32_t position) noexcept
{
    const auto offset = static_cast<std::int32_t>(event.time - position);
    const auto* note = as<clap_event_note_t>(event);
    if (event.type == CLAP_EVENT_NOTE_ON && isNote(note)) {
        // A note-on of velocity 0 would read as a note-off.
        target.queueMidi(channelStatus(0x90, note->channel), static_cast<std::uint8_t>(note->key),
                         velocityByte(note->velocity, 1.0), offset);
    } else if (event.type == CLAP_EVENT_NOTE_OFF && isNote(note)) {
        target.queueMidi(channelStatus(0x80, note->channel), static_cast<std::uint8_t>(note->key),
                         velocityByte(note->velocity, 0.0), offset);
    } else if (event.type == CLAP_EVENT_MIDI) {
        if (const auto* midi = as<clap_event_midi_t>(event))
            target.queueMidi(midi->data[0], midi->data[1], midi->data[2], offset);
    }
}
