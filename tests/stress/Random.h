#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

/// Random numbers by a seed, the same with every standard library. It never allocates. Thread: one at a time.
class Random {
public:
    explicit Random(std::uint32_t seed) : engine(seed) {}

    std::uint32_t bits() { return static_cast<std::uint32_t>(engine()); }
    /// 0..count - 1. @param count  at least 1
    std::uint32_t below(std::uint32_t count) { return bits() % count; }
    /// lowest..highest
    int between(int lowest, int highest)
    {
        return lowest + static_cast<int>(below(static_cast<std::uint32_t>(highest - lowest) + 1));
    }
    bool oneIn(std::uint32_t count) { return below(count) == 0; }
    /// 0..1, both included.
    double unit() { return static_cast<double>(bits()) / 4294967295.0; }
    /// One element of what isn't empty.
    template <class Sequence>
    auto& pick(Sequence& sequence)
    {
        return sequence[below(static_cast<std::uint32_t>(std::size(sequence)))];
    }

private:
    std::mt19937 engine;
};
