#pragma once

#include "core/AbstractChannelEventReceiver.h"

class GenericPluginProcessor;

/// Plays the notes on a processor's engine and moves what its controllers are mapped to, before any listener
/// hears. Thread: audio.
class DefaultChannelEventReceiver : public AbstractChannelEventReceiver {
public:
    /// `player` outlives this.
    explicit DefaultChannelEventReceiver(GenericPluginProcessor& player) : processor(player) {}

    void controller(int number, int raw, float value) noexcept REALTIME override;
    void noteOff(int key, float velocity) noexcept REALTIME override;
    void noteOn(int key, float velocity) noexcept REALTIME override;
    void programChange(int bank, int program) noexcept REALTIME override;

private:
    GenericPluginProcessor& processor;
};
