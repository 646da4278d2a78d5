#include "core/DefaultChannelEventReceiver.h"

#include "core/GenericPluginProcessor.h"

void DefaultChannelEventReceiver::controller(int number, int raw, float value) noexcept
{
    processor.controllerMoved(number, value);
    AbstractChannelEventReceiver::controller(number, raw, value);
}

void DefaultChannelEventReceiver::noteOff(int key, float velocity) noexcept
{
    processor.noteOff(key, velocity);
    AbstractChannelEventReceiver::noteOff(key, velocity);
}

void DefaultChannelEventReceiver::noteOn(int key, float velocity) noexcept
{
    processor.noteOn(key, velocity);
    AbstractChannelEventReceiver::noteOn(key, velocity);
}

void DefaultChannelEventReceiver::programChange(int bank, int program) noexcept
{
    processor.programChanged(bank, program);
}
