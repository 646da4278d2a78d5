#include "wave/MemoryTrail.h"

#include <algorithm>
#include <cstdint>

namespace wave {

namespace {

constexpr unsigned turnsPerTrail = 4096;

}  // namespace

void MemoryTrail::addRange(const void* begin, std::size_t bytes)
{
    const char* const end = static_cast<const char*>(begin) + bytes;
    const char* at = static_cast<const char*>(begin) - reinterpret_cast<std::uintptr_t>(begin) % line;
    for (; at < end; at += line)
        fixed.push_back(at);
    std::sort(fixed.begin(), fixed.end());
}

bool MemoryTrail::isDue() noexcept
{
    if (turns++ % turnsPerTrail != 1)  // in the first turn much comes by once for ever
        return false;
    notedCount = 0;
    return true;
}

void MemoryTrail::note(const void* place, std::size_t bytes) noexcept
{
    const char* const end = static_cast<const char*>(place) + bytes;
    const char* at = static_cast<const char*>(place) - reinterpret_cast<std::uintptr_t>(place) % line;
    for (; at < end && notedCount < noted.size(); at += line) {
        if (!std::binary_search(fixed.begin(), fixed.end(), at))
            noted[notedCount++] = at;
    }
}

void MemoryTrail::fetch() const noexcept
{
    for (const char* at : fixed)
        __builtin_prefetch(at, 1);
    for (std::size_t i = 0; i < notedCount; ++i)
        __builtin_prefetch(noted[i], 1);
    for (const MemoryStream* stream : streams)
        stream->fetchAhead();
}

}  // namespace wave
