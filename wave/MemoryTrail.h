#pragma once

#include "foundation/Realtime.h"

#include <array>
#include <cstddef>
#include <vector>

namespace wave {

/// Memory that an engine walks along, some further with every sub-block.
class MemoryStream {
public:
    /// Asks for what the next samples will read and write. Thread: audio.
    virtual void fetchAhead() const noexcept REALTIME = 0;

protected:
    ~MemoryStream() = default;
};

/// The places in memory that an engine comes by in a sub-block. They are many and far apart, and where other
/// engines played in between, none is left in the processor's cache: one after the other would be waited for.
/// Asked for all at once they come side by side. Only addresses are kept; nothing is read through them.
/// Thread: audio, but for `addRange`.
class MemoryTrail {
public:
    /// What is asked for whether it is come by or not. It outlives the trail. Thread: main.
    void addRange(const void* begin, std::size_t bytes);

    /// Outlives the trail, or is removed. Thread: main.
    void addStream(const MemoryStream& stream) { streams.push_back(&stream); }
    void removeStream(const MemoryStream& stream) noexcept { std::erase(streams, &stream); }

    /// Counts a turn. True now and then: what is noted after that replaces what was, as the graph's ways
    /// change.
    bool isDue() noexcept REALTIME;
    /// @param bytes  from `place` on; dropped where there is no more room
    void note(const void* place, std::size_t bytes) noexcept REALTIME;

    /// Asks for all of it.
    void fetch() const noexcept REALTIME;

private:
    static constexpr std::size_t line = 64;  // bytes

    unsigned turns = 0;
    std::size_t notedCount = 0;
    std::vector<const MemoryStream*> streams;
    std::vector<const char*> fixed;        // lines
    std::array<const char*, 768> noted{};  // lines
};

}  // namespace wave
