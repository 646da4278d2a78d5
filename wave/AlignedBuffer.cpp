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
    static_assert(line <= EngineMemory::alignment);
    return (static_cast<std::size_t>(length) * sizeof(float) + line - 1) / line * line;
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
    auto* const fresh = static_cast<float*>(EngineMemory::take(bytes));
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
    EngineMemory::giveBack(samples, bytesFor(length));
    samples = nullptr;
    length = 0;
}

}  // namespace wave
