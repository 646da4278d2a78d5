#pragma once

#include "foundation/Realtime.h"

namespace wave {

/// Memory for what is only needed while a sub-block is computed. The environments of one thread play one
/// after the other: lent the same memory, they find it in the processor's cache, where memory of their own
/// would have left by the time their turn comes again. Made once for the process; a piece is lent to one
/// borrower at a time. Thread: any.
class WorkingMemory {
public:
    static constexpr int length = 12288;  // samples of a piece

    /// The piece that this thread had last, or another free one. Null if there is none near. What it holds is
    /// what the last borrower left.
    /// @param isWarm  set if that was the same one: nobody else seems to play on this thread
    static float* lend(const void* borrower, bool& isWarm) noexcept REALTIME;
    /// @param piece  what `lend` returned
    static void takeBack(const float* piece) noexcept REALTIME;
};

}  // namespace wave
