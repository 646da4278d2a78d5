#include "wave/Filter.h"

namespace wave {

void Filter::generate(Block* block, int count, int flags) noexcept
{
    Block& in = input ? input->pull(count) : environment().silentBlock();
    block->setConstant(false);
    filter(&in, block, count, flags);
}

}  // namespace wave
