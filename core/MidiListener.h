#pragma once

#include "foundation/Realtime.h"

/// Hears decoded MIDI. Thread: audio, between sub-blocks.
class MidiListener {
public:
    virtual ~MidiListener() = default;

    /// @param value  0..1
    virtual void channelPressure(float value) noexcept REALTIME = 0;
    /// @param key  0..127  @param value  0..1
    virtual void polyPressure(int key, float value) noexcept REALTIME = 0;
    /// @param number  0..127  @param raw  0..127  @param value  `raw` as 0..1
    virtual void controller(int number, int raw, float value) noexcept REALTIME = 0;
    /// Controller 1, which comes as `controller` too. @param value  0..1
    virtual void modWheel(float value) noexcept REALTIME = 0;
    /// Key 0 stands for all keys. @param velocity  0..1
    virtual void noteOff(int key, float velocity) noexcept REALTIME = 0;
    /// @param velocity  above 0, to 1
    virtual void noteOn(int key, float velocity) noexcept REALTIME = 0;
    /// @param value  -0.5..0.5; at rest a little above 0
    virtual void pitchBend(float value) noexcept REALTIME = 0;
};
