#include "wave/WorkingMemory.h"

#include "wave/AlignedBuffer.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <pthread.h>

namespace wave {

namespace {

constexpr int pieceCount = 64;  // more than there are threads that play at once
constexpr int attempts = 4;

// Takes up pages only where it is used.
alignas(AlignedBuffer::alignment) float pieces[pieceCount][WorkingMemory::length];

struct alignas(AlignedBuffer::alignment) Loan {
    std::atomic<bool> lent{false};
    const void* borrower = nullptr;  // the last one; only for comparison
};
std::array<Loan, pieceCount> loans;

/// A place that stays the same for a thread, without memory of the thread's own, which a loaded module would
/// have to allocate.
std::uint32_t placeOfThread() noexcept
{
    static_assert(pieceCount == 1 << 6);
    const auto id = static_cast<std::uint64_t>(pthread_self());
    return static_cast<std::uint32_t>((id >> 6) * 0x9E3779B97F4A7C15u >> (64 - 6));
}

}  // namespace

float* WorkingMemory::lend(const void* borrower, bool& isWarm) noexcept
{
    std::uint32_t place = placeOfThread();
    for (int i = 0; i < attempts; ++i, place = (place + 1) % pieceCount) {
        Loan& loan = loans[place];
        if (loan.lent.exchange(true, std::memory_order_acquire))
            continue;
        isWarm = loan.borrower == borrower;
        loan.borrower = borrower;
        return pieces[place];
    }
    isWarm = false;
    return nullptr;
}

void WorkingMemory::takeBack(const float* piece) noexcept
{
    const std::ptrdiff_t place = (piece - pieces[0]) / length;
    loans[static_cast<std::size_t>(place)].lent.store(false, std::memory_order_release);
}

}  // namespace wave
