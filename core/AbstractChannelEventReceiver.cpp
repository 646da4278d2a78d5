#include "core/AbstractChannelEventReceiver.h"

namespace {

constexpr int modWheelController = 1;

}  // namespace

void AbstractChannelEventReceiver::channelPressure(float value) noexcept
{
    for (MidiListener* listener : listeners)
        listener->channelPressure(value);
}

void AbstractChannelEventReceiver::polyPressure(int key, float value) noexcept
{
    for (MidiListener* listener : listeners)
        listener->polyPressure(key, value);
}

void AbstractChannelEventReceiver::controller(int number, int raw, float value) noexcept
{
    for (MidiListener* listener : listeners) {
        listener->controller(number, raw, value);
        if (number == modWheelController)
            listener->modWheel(value);
    }
}

void AbstractChannelEventReceiver::noteOff(int key, float velocity) noexcept
{
    for (MidiListener* listener : listeners)
        listener->noteOff(key, velocity);
}

void AbstractChannelEventReceiver::noteOn(int key, float velocity) noexcept
{
    for (MidiListener* listener : listeners)
        listener->noteOn(key, velocity);
}

void AbstractChannelEventReceiver::pitchBend(float value) noexcept
{
    for (MidiListener* listener : listeners)
        listener->pitchBend(value);
}

void AbstractChannelEventReceiver::programChange(int, int) noexcept {}
