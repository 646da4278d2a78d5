#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Realtime.h"
#include "foundation/UpdatedObject.h"

#include <array>
#include <atomic>
#include <cstdint>

class BinaryDataReader;
class BinaryDataWriter;

/// What each of the MIDI controllers moves: a parameter, by its index, or something that stands for several.
/// No target has more than one controller.
///
/// As bytes, in a file and between the shared map and an engine's copy of it:
///
///   "MVCM" | version 1 | 128 targets of 32 bits
///
/// Thread: one writes; any reads.
class ControllerMapping : public UpdatedObject {
public:
    static constexpr int controllerCount = 128;
    static constexpr std::int32_t none = -1;
    /// Targets from here on are virtual parameters, by their place in the list of those.
    static constexpr std::int32_t firstVirtualTarget = 0x100000;

    ControllerMapping();

    /// Takes over a written map. False, and nothing is changed, if its header isn't that of a map; a map that
    /// ends too soon changes only what it holds.
    bool read(BinaryDataReader& reader);
    void write(BinaryDataWriter& writer) const;

    /// Takes all targets away.
    void reset();
    /// Gives `target` to `controller` alone. @param controller  0..127, or -1 for none
    void assign(int controller, std::int32_t target);

    /// -1 if there is none.
    int controllerOf(std::int32_t target) const noexcept;
    /// `none` too for a controller that there can't be. Thread: audio.
    std::int32_t targetOf(int controller) const noexcept REALTIME;

    /// Fired once at the end of an update that changed something.
    NotifyEvent mapChanged;

private:
    void place(int controller, std::int32_t target);
    void set(int controller, std::int32_t target);

    // An engine's copy is written by the main thread while the audio thread reads it.
    std::array<std::atomic<std::int32_t>, controllerCount> map;
    PendingEvent change{&mapChanged};
};
