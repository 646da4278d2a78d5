#pragma once

#include <cstdint>
#include <random>
#include <string>

/// Damages bytes as files get damaged, and as somebody would who means harm: cut, flipped, doubled, swapped,
/// and with lengths that lie. The same seed and run give the same bytes on every machine.
class Mutator {
public:
    Mutator(std::uint32_t seed, std::uint32_t run) : random(seed * 2654435761u + run * 40503u + 1u) {}

    std::string mutate(const std::string& original);

private:
    std::uint32_t below(std::size_t limit) { return static_cast<std::uint32_t>(random() % limit); }
    void damage(std::string& bytes);

    std::minstd_rand random;
};
