#include "wave/EngineMemory.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>

namespace wave {

namespace {

#if defined(SORDELIN_SANITIZED)
// Each piece by itself, so that the sanitizers see where one ends and whether it is still there.
constexpr std::size_t largestShared = 0;
#else
constexpr std::size_t largestShared = EngineMemory::largest;
#endif

/// Filled from its start on; what is given back is free once all of it is. Engines come and go as a whole.
struct Chunk {
    static constexpr std::size_t size = std::size_t{1} << 21;  // bytes; it is aligned alike

    static Chunk* of(void* place)
    {
        return reinterpret_cast<Chunk*>(reinterpret_cast<std::uintptr_t>(place) & ~(size - 1));
    }

    std::size_t used = EngineMemory::alignment;  // bytes, this head included
    int pieces = 0;                              // that are out
};

std::mutex lock;           // guards the chunks
Chunk* current = nullptr;  // the one that is being filled; null where there is none

Chunk* makeChunk() noexcept
{
    void* const memory = std::aligned_alloc(Chunk::size, Chunk::size);
    if (!memory)
        return nullptr;
#if defined(MADV_HUGEPAGE)
    madvise(memory, Chunk::size, MADV_HUGEPAGE);
#endif
    return new (memory) Chunk;
}

}  // namespace

void* EngineMemory::take(std::size_t bytes) noexcept
{
    if (bytes > largestShared)
        return ::operator new(bytes, std::align_val_t(alignment), std::nothrow);
    const std::size_t rounded = (bytes + alignment - 1) / alignment * alignment;
    const std::lock_guard guard(lock);
    if (!current || current->used + rounded > Chunk::size) {
        Chunk* const fresh = makeChunk();
        if (!fresh)
            return nullptr;
        current = fresh;
    }
    void* const place = reinterpret_cast<char*>(current) + current->used;
    current->used += rounded;
    ++current->pieces;
    return place;
}

void EngineMemory::giveBack(void* place, std::size_t bytes) noexcept
{
    if (!place)
        return;
    if (bytes > largestShared) {
        ::operator delete(place, std::align_val_t(alignment));
        return;
    }
    const std::lock_guard guard(lock);
    Chunk* const chunk = Chunk::of(place);
    if (--chunk->pieces > 0)
        return;
    if (chunk == current)
        current = nullptr;
    std::free(chunk);
}

}  // namespace wave
