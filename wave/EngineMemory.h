#pragma once

#include <cstddef>

namespace wave {

/// Memory for what engines come by in every sub-block: their components and the blocks between them. They lie
/// close together here, whatever state the rest of the host's memory is in, on pages of 2 MiB where the
/// system has such. With many instances it is pages rather than lines that a processor can't keep in mind.
/// Thread: any but audio.
class EngineMemory {
public:
    /// What is larger gains nothing by lying beside others, and lies elsewhere.
    static constexpr std::size_t largest = 65536;  // bytes
    static constexpr std::size_t alignment = 64;   // bytes, of all that is taken

    /// Null where there is no more memory. Not zero.
    static void* take(std::size_t bytes) noexcept;
    /// @param place  what `take` returned for as many bytes, or null
    static void giveBack(void* place, std::size_t bytes) noexcept;
};

}  // namespace wave
