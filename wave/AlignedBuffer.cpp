#include "wave/AlignedBuffer.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace wave {

void AlignedBuffer::resize(int newLength)
{
    if (newLength == length)
        return;
    if (newLength < 1) {
        release();
        return;
    }
    const std::size_t bytes =
        (static_cast<std::size_t>(newLength) * sizeof(float) + alignment - 1) & ~(alignment - 1);
    auto* fresh = static_cast<float*>(::operator new(bytes, std::align_val_t(alignment), std::nothrow));
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
    ::operator delete(samples, std::align_val_t(alignment));
    samples = nullptr;
    length = 0;
}

}  // namespace wave
