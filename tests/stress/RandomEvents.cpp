#include "stress/RandomEvents.h"

void RandomEvents::fill(EventList& events, std::uint32_t frames)
{
    events.clear();
    // A project's jump to another place sets everything anew; a fader bank sends a lot for a while.
    const std::uint32_t moves = random.oneIn(300) ? 1000 : random.below(6);
    const std::uint32_t messages = random.oneIn(300) ? 3000 : random.below(4);
    const std::uint32_t count = moves + messages;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto time = static_cast<std::uint32_t>(std::uint64_t{i} * frames / count);
        if (random.below(count) < moves)
            addAutomation(events, time);
        else
            addMidi(events, time);
    }
}

void RandomEvents::addAutomation(EventList& events, std::uint32_t time)
{
    const ClapParameter& parameter = random.pick(parameters);
    const double place = random.oneIn(4) ? random.below(2) : random.unit();
    events.add(parameterEvent(time, parameter.id,
                              parameter.minimum + place * (parameter.maximum - parameter.minimum)));
}

void RandomEvents::addMidi(EventList& events, std::uint32_t time)
{
    const auto first = static_cast<std::uint8_t>(random.below(128));
    const auto second = static_cast<std::uint8_t>(random.below(128));
    const int channel = random.between(0, 15);
    switch (random.below(8)) {
    case 0:
        events.add(noteOnEvent(time, channel, first, random.unit()));
        break;
    case 1:
        events.add(noteOffEvent(time, channel, first, random.unit()));
        break;
    case 2:  // a bend, pressure or a program
        events.add(
            midiEvent(time, static_cast<std::uint8_t>(0xC0 + 16 * random.below(3) + channel), first, second));
        break;
    case 3:  // notes of older hosts, and pressure of one key
        events.add(
            midiEvent(time, static_cast<std::uint8_t>(0x80 + 16 * random.below(3) + channel), first, second));
        break;
    default:
        events.add(midiEvent(time, static_cast<std::uint8_t>(0xB0 + channel), first, second));
    }
}
