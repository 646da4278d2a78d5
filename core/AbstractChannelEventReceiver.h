#pragma once

#include "core/MidiListener.h"

#include <vector>

/// Takes the decoded MIDI of one channel, or of all, and hands it to its listeners. The operations are called
/// by the decoder. Thread: audio, unless told otherwise.
class AbstractChannelEventReceiver {
public:
    AbstractChannelEventReceiver() = default;
    AbstractChannelEventReceiver(const AbstractChannelEventReceiver&) = delete;
    AbstractChannelEventReceiver& operator=(const AbstractChannelEventReceiver&) = delete;
    virtual ~AbstractChannelEventReceiver() = default;

    /// @param value  0..1
    virtual void channelPressure(float value) noexcept REALTIME;
    /// @param key  0..127  @param value  0..1
    virtual void polyPressure(int key, float value) noexcept REALTIME;
    /// @param number  0..127  @param raw  0..127  @param value  `raw` as 0..1
    virtual void controller(int number, int raw, float value) noexcept REALTIME;
    /// @param key  0..127; 0 with a velocity of 0 also stands for all keys  @param velocity  0..1
    virtual void noteOff(int key, float velocity) noexcept REALTIME;
    /// @param key  0..127  @param velocity  above 0, to 1
    virtual void noteOn(int key, float velocity) noexcept REALTIME;
    /// @param value  -0.5..0.5
    virtual void pitchBend(float value) noexcept REALTIME;
    /// No listener hears of it. @param bank  0..16383  @param program  0..127
    virtual void programChange(int bank, int program) noexcept REALTIME;

    /// Listeners are called in the order in which they were added, and outlive the last message. Not owned.
    /// Thread: main, engine at rest.
    void addListener(MidiListener& listener) { listeners.push_back(&listener); }
    void removeListener(MidiListener& listener) { std::erase(listeners, &listener); }

private:
    std::vector<MidiListener*> listeners;
};
