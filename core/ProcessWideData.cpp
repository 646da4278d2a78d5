#include "core/ProcessWideData.h"

#include <mutex>

namespace {

// Constant-initialised and trivially destroyed: nothing runs when the module is loaded or unloaded.
constinit std::mutex processLock;
constinit int engineCount = 0;
constinit std::atomic<std::uint32_t> blockCounter{0};

}  // namespace

bool ProcessWideData::acquire()
{
    const std::lock_guard lock(processLock);
    return ++engineCount == 1;
}

bool ProcessWideData::release()
{
    const std::lock_guard lock(processLock);
    return --engineCount == 0;
}

std::uint32_t ProcessWideData::nextBlockNumber() noexcept
{
    return blockCounter.fetch_add(1, std::memory_order_relaxed) + 1;
}
