#pragma once

#include "wave/Producer.h"

namespace wave {

/// The engine's side of a channel that comes from outside.
class Input : public Producer {
public:
    explicit Input(Environment& owner) : Producer(owner, OwnBlock::Passing) {}

    /// Sets the samples that lie ahead of the present clock, valid until the next call. `samples` may be
    /// null: silence.
    void setBuffer(const float* samples, int count) noexcept REALTIME;

    static constexpr float ceiling = 1e6f;  // +120 dBFS

protected:
    /// Copies what is due now. What isn't a finite number becomes 0, and so does a denormal: neither may
    /// enter a feedback loop. What is beyond `ceiling` is held there: sums and gains further on stay finite.
    void generate(Block* block, int count, int flags) noexcept REALTIME override;

private:
    /// The samples between the last read and the present clock went by unread.
    void skipUnread() noexcept REALTIME;

    const float* readPointer = nullptr;
    int samplesLeft = 0;
    std::uint64_t readTime = 0;  // clock value of the sample at `readPointer`
};

}  // namespace wave
