#include "wave/AlignedBuffer.h"

#include "wave/EngineMemory.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace wave {

namespace {

std::size_t bytesFor(int length)
{
    constexpr std::size_t line = AlignedBuffer::alignment;
    return (static_cast<std::size_t>(length) * sizeof(float) + line - 1) / line * line;
}

float* take(std::size_t bytes)
{
    static_assert(AlignedBuffer::alignment <= EngineMemory::alignment);
    if (bytes <= EngineMemory::largest)
        return static_cast<float*>(EngineMemory::take(bytes));
    return static_cast<float*>(
        ::operator new(bytes, std::align_val_t(AlignedBuffer::alignment), std::nothrow));
}

}  // namespace

void AlignedBuffer::resize(int newLength)
{
    if (newLength == length)
        return;
    if (newLength < 1) {
        release();
        return;
    }
    const std::size_t bytes = bytesFor(newLength);
    float* const fresh = take(bytes);
    const int kept = fresh ? std::min(length, newLength) : 0;
    if (fresh) {
        std::memset(fresh, 0, bytes);
        if (kept > 0)
            std::memcpy(fresh, samples, static_cast<std::size_t>(kept) * sizeof(float));
    }
    release();
    samples = fresh;
    length = fresh ? newLength : 0;
}

void AlignedBuffer::release()
{
    if (bytesFor(length) <= EngineMemory::largest)
        EngineMemory::giveBack(samples);
    else
        ::operator delete(samples, std::align_val_t(alignment));
    samples = nullptr;
    length = 0;
}

}  // namespace wave
