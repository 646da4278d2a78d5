#pragma once

#include "foundation/Realtime.h"

#include <cstddef>
#include <utility>

namespace wave {

/// A resizable array of floats for signal data. The start is aligned to a cache line, the memory is zero
/// when taken, and the usable length is rounded up to whole lines, so that loops may work in groups of four
/// or eight and touch what lies behind the last sample.
class AlignedBuffer {
public:
    static constexpr std::size_t alignment = 64;  // bytes

    AlignedBuffer() = default;
    explicit AlignedBuffer(int initialLength) { resize(initialLength); }
    AlignedBuffer(const AlignedBuffer&) = delete;
    AlignedBuffer& operator=(const AlignedBuffer&) = delete;
    ~AlignedBuffer() { release(); }

    /// Keeps the leading samples, and zeroes what is new. A length below 1 frees the memory. If there is none
    /// left, `data()` is null and `size()` 0. Thread: not audio.
    void resize(int newLength);

    /// Exchanges the memory for another of the same length, alignment and padding, and returns the one so
    /// far. It has to be back before the length changes or the buffer goes.
    float* exchange(float* memory) noexcept REALTIME { return std::exchange(samples, memory); }

    float* data() noexcept REALTIME { return samples; }
    const float* data() const noexcept REALTIME { return samples; }
    int size() const noexcept REALTIME { return length; }  // in samples
    float& operator[](int i) noexcept REALTIME { return samples[i]; }
    float operator[](int i) const noexcept REALTIME { return samples[i]; }

private:
    void release();

    int length = 0;
    float* samples = nullptr;
};

}  // namespace wave
