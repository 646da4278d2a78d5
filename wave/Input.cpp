#include "wave/Input.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace wave {

void Input::setBuffer(const float* samples, int count) noexcept
{
    readPointer = samples;
    samplesLeft = samples ? count : 0;
    readTime = environment().now();
}

void Input::generate(Block* block, int count, int) noexcept
{
    skipUnread();
    const int available = std::min(count, samplesLeft);
    float* out = block->data();
    for (int i = 0; i < available; ++i) {
        const float magnitude = std::fabs(readPointer[i]);
        const float held = std::clamp(readPointer[i], -ceiling, ceiling);
        out[i] = magnitude >= FLT_MIN && magnitude <= FLT_MAX ? held : 0.0f;
    }
    std::fill(out + available, out + count, 0.0f);
    block->setConstant(false);
    readPointer += available;
    samplesLeft -= available;
    readTime += static_cast<std::uint64_t>(count);
}

void Input::skipUnread() noexcept
{
    const std::uint64_t behind = environment().now() - readTime;
    const int skipped =
        static_cast<int>(std::min<std::uint64_t>(behind, static_cast<std::uint64_t>(samplesLeft)));
    readPointer += skipped;
    samplesLeft -= skipped;
    readTime = environment().now();
}

}  // namespace wave
