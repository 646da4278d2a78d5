#include "core/MidiDecoder.h"

#include <cstddef>

namespace {

constexpr float byteScale = 0.007874016f;   // 1 / 127
constexpr float bendScale = 6.103888e-05f;  // 1 / 16383, nearly
constexpr std::uint8_t systemReset = 0xFF;

enum Kind {
    NoteOff = 0x8,
    NoteOn,
    PolyPressure,
    ControlChange,
    ProgramChange,
    ChannelPressure,
    PitchBend,
    System
};
enum Controller { BankHigh = 0, BankLow = 32, AllNotesOff = 123 };

float scaled(int byte) noexcept { return static_cast<float>(byte) * byteScale; }

bool isData(std::uint8_t byte) noexcept { return byte < 0x80; }

/// Messages of one data byte may leave anything in the place of the second.
bool hasItsData(const MidiMessage& message) noexcept
{
    const int kind = message.status >> 4;
    const bool one = kind == ProgramChange || kind == ChannelPressure;
    return isData(message.data1) && (one || isData(message.data2));
}

}  // namespace

void MidiDecoder::decode(const MidiMessage& message) noexcept
{
    if (receiver.rawListener)
        receiver.rawListener->message(message.status, message.data1, message.data2);
    if (message.status >> 4 == System) {
        if (message.status == systemReset && receiver.systemReceiver)
            receiver.systemReceiver->systemReset();
        return;
    }
    if (isData(message.status) || !hasItsData(message))
        return;
    dispatch(AbstractMusicEventReceiver::allChannels, message);
    dispatch(AbstractMusicEventReceiver::entryOf(message.status & 15), message);
}

void MidiDecoder::dispatch(int entry, const MidiMessage& message) noexcept
{
    AbstractChannelEventReceiver* channel = receiver.channel(entry);
    if (!channel)
        return;
    const int data1 = message.data1;
    const int data2 = message.data2;
    switch (message.status >> 4) {
    case NoteOff:
        return channel->noteOff(data1, scaled(data2));
    case NoteOn:
        return data2 != 0 ? channel->noteOn(data1, scaled(data2)) : channel->noteOff(data1, 0.0f);
    case PolyPressure:
        return channel->polyPressure(data1, scaled(data2));
    case ControlChange:
        return controlChange(entry, data1, data2);
    case ProgramChange:
        return channel->programChange(banks[static_cast<std::size_t>(entry)], data1);
    case ChannelPressure:
        return channel->channelPressure(scaled(data1));
    case PitchBend:
        return channel->pitchBend(static_cast<float>(data2 * 128 + data1) * bendScale - 0.5f);
    default:
        return;
    }
}

void MidiDecoder::controlChange(int entry, int number, int raw) noexcept
{
    AbstractChannelEventReceiver& channel = *receiver.channel(entry);
    int& bank = banks[static_cast<std::size_t>(entry)];
    switch (number) {
    case BankHigh:
        bank = raw * 128 + (bank & 0x7F);
        return;
    case BankLow:
        bank = raw + (bank & 0x3F80);
        return;
    case AllNotesOff:
        return channel.noteOff(0, 0.0f);
    default:
        return channel.controller(number, raw, scaled(raw));
    }
}
