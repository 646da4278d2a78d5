#pragma once

#include "core/AbstractChannelEventReceiver.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

/// Where decoded MIDI goes: one place that hears every channel, one for each single channel, and two further
/// ones for what isn't a channel's.
class AbstractMusicEventReceiver {
public:
    /// Hears of the message that resets a whole MIDI system.
    class SystemReceiver {
    public:
        virtual ~SystemReceiver() = default;
        virtual void systemReset() noexcept REALTIME = 0;
    };

    /// Hears every message before it is decoded, as it came.
    class RawListener {
    public:
        virtual ~RawListener() = default;
        virtual void message(std::uint8_t status, std::uint8_t data1,
                             std::uint8_t data2) noexcept REALTIME = 0;
    };

    static constexpr int allChannels = 0;
    /// The entry of a MIDI channel. @param channel  0..15
    static constexpr int entryOf(int channel) noexcept { return channel + 1; }
    static constexpr int entryCount = 17;

    AbstractMusicEventReceiver() = default;
    AbstractMusicEventReceiver(const AbstractMusicEventReceiver&) = delete;
    AbstractMusicEventReceiver& operator=(const AbstractMusicEventReceiver&) = delete;
    virtual ~AbstractMusicEventReceiver() = default;

    /// The receiver at an entry, or null. @param entry  0..16  Thread: audio.
    AbstractChannelEventReceiver* channel(int entry) const noexcept REALTIME
    {
        return entries[static_cast<std::size_t>(entry)].get();
    }

    // Null, or not owned. Set on the main thread, engine at rest.
    SystemReceiver* systemReceiver = nullptr;
    RawListener* rawListener = nullptr;

protected:
    std::array<std::unique_ptr<AbstractChannelEventReceiver>, entryCount> entries;
};
