#include "HostileEvents.h"

#include <algorithm>
#include <cstring>
#include <limits>

HostileEvents::HostileEvents(Random& numbers, std::uint32_t parameterCount)
    : random(numbers), parameters(parameterCount)
{
    table.ctx = this;
    table.size = [](const clap_input_events_t* list) {
        return static_cast<std::uint32_t>(static_cast<HostileEvents*>(list->ctx)->events.size());
    };
    table.get = [](const clap_input_events_t* list, std::uint32_t index) {
        const auto& kept = static_cast<HostileEvents*>(list->ctx)->events;
        return index < kept.size() ? reinterpret_cast<const clap_event_header_t*>(kept[index].get())
                                   : nullptr;
    };
}

void HostileEvents::fill(std::uint32_t frames)
{
    events.clear();
    for (std::uint32_t i = random.oneIn(100) ? 2000 : random.below(20); i-- > 0;)
        add(frames);
}

double HostileEvents::strangeValue()
{
    using Limits = std::numeric_limits<double>;
    const double strange[] = {Limits::quiet_NaN(),
                              Limits::infinity(),
                              -Limits::infinity(),
                              Limits::max(),
                              Limits::lowest(),
                              Limits::denorm_min(),
                              -1.0,
                              1e9,
                              -0.0};
    return random.oneIn(4) ? random.pick(strange) : random.unit() * 4.0 - 2.0;
}

void HostileEvents::add(std::uint32_t frames)
{
    static const std::uint8_t sysex[] = {0xF0, 0x7E, 0x7F, 0xF7};
    const auto small = [this] { return static_cast<std::int16_t>(random.bits()); };
    const std::int16_t key = random.oneIn(4) ? small() : static_cast<std::int16_t>(random.below(128));
    switch (const auto type = static_cast<std::uint16_t>(random.below(16))) {
    case CLAP_EVENT_NOTE_ON:
    case CLAP_EVENT_NOTE_OFF:
    case CLAP_EVENT_NOTE_CHOKE:
    case CLAP_EVENT_NOTE_END:
        return keep(clap_event_note_t{{}, -1, small(), small(), key, strangeValue()}, type, frames);
    case CLAP_EVENT_NOTE_EXPRESSION:
        return keep(clap_event_note_expression_t{{}, small(), -1, small(), small(), key, strangeValue()},
                    type, frames);
    case CLAP_EVENT_PARAM_MOD:
    case CLAP_EVENT_PARAM_GESTURE_BEGIN:
    case CLAP_EVENT_PARAM_GESTURE_END:
        return keep(clap_event_param_gesture_t{{}, random.below(parameters)}, type, frames);
    case CLAP_EVENT_TRANSPORT: {
        clap_event_transport_t transport{};
        transport.flags = random.bits();
        transport.tempo = strangeValue();
        return keep(transport, type, frames);
    }
    case CLAP_EVENT_MIDI: {
        const auto byte = [this] { return static_cast<std::uint8_t>(random.bits()); };
        return keep(clap_event_midi_t{{}, 0, {byte(), byte(), byte()}}, type, frames);
    }
    case CLAP_EVENT_MIDI_SYSEX:
        return keep(clap_event_midi_sysex_t{{}, 0, random.oneIn(2) ? sysex : nullptr, sizeof sysex}, type,
                    frames);
    case CLAP_EVENT_MIDI2:
        return keep(clap_event_midi2_t{{}, 0, {random.bits(), 0, 0, 0}}, type, frames);
    case 13:
        return events.push_back(nullptr);
    default: {
        const clap_id id = random.oneIn(8) ? random.bits() : random.below(parameters);
        return keep(clap_event_param_value_t{{}, id, nullptr, -1, small(), small(), small(), strangeValue()},
                    random.oneIn(8) ? type : std::uint16_t{CLAP_EVENT_PARAM_VALUE}, frames);
    }
    }
}

template <class Event>
void HostileEvents::keep(Event event, std::uint16_t type, std::uint32_t frames)
{
    const std::uint32_t sizes[] = {sizeof(Event), sizeof(Event) + 8, sizeof(clap_event_header_t),
                                   sizeof(Event) - 4, 0};
    const std::uint32_t times[] = {random.below(frames + 1), frames, 0xFFFFFFFF, 0x80000000, random.bits()};
    event.header.size = random.oneIn(6) ? random.pick(sizes) : sizeof(Event);
    event.header.time = random.oneIn(6) ? random.pick(times) : random.below(frames + 1);
    event.header.space_id = random.oneIn(10) ? static_cast<std::uint16_t>(random.bits()) : 0;
    event.header.type = type;
    event.header.flags = random.bits();
    const std::size_t room = std::max<std::size_t>(event.header.size, sizeof event.header);
    events.push_back(std::make_unique<std::byte[]>(room));
    std::memcpy(events.back().get(), &event, std::min(room, sizeof event));
}
