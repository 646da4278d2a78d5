#include "wave/Block.h"

#include "wave/Environment.h"

#include <algorithm>

namespace wave {

BasicBlock<float>::BasicBlock(const Environment& environment) : AlignedBuffer(environment.maxBlockSize()) {}

void BasicBlock<float>::fill(float value, int count) noexcept
{
    std::fill_n(data(), count, value);
    constant = true;
}

ConstValueBlock::ConstValueBlock(const Environment& environment, float constantValue) : Block(environment)
{
    fill(constantValue, size());
}

}  // namespace wave
