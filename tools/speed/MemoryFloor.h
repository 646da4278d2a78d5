#pragma once

#include "speed/SpeedSubject.h"

#include <vector>

/// What no delay can go below: both channels copied into and out of rings of the product's size.
class MemoryFloor : public SpeedSubject {
public:
    MemoryFloor();
    void playStretch() override;

private:
    static constexpr std::size_t ringLength = 262144;  // samples
    static constexpr std::size_t block = 128;

    std::vector<float> rings[2] = {std::vector<float>(ringLength), std::vector<float>(ringLength)};
    std::vector<float> input = std::vector<float>(block, 0.25f);
    std::vector<float> output = std::vector<float>(block);
    std::size_t place = 0;
};
