#include "speed/MemoryFloor.h"

#include <algorithm>

namespace {

constexpr std::size_t delaySamples = 131 * 128;  // 349 ms: whole blocks, so that no copy is cut in two

}  // namespace

MemoryFloor::MemoryFloor() : SpeedSubject("delay lines: copies through two rings") {}

void MemoryFloor::playStretch()
{
    for (std::int64_t done = 0; done < stretchFrames; done += block) {
        const std::size_t from = (place + ringLength - delaySamples) % ringLength;
        for (std::vector<float>& ring : rings) {
            std::copy_n(ring.data() + from, block, output.data());
            std::copy_n(input.data(), block, ring.data() + place);
            // What was read counts as used: the compiler may not leave the copies out.
            asm volatile("" : : "r"(output.data()), "r"(ring.data()) : "memory");
        }
        place = (place + block) % ringLength;
    }
}
