#include "product/DelayPanController.h"

#include <algorithm>

void DelayPanController::generate(wave::Block** blocks, int count, int) noexcept
{
    const wave::Block& position = pan.pull(count);
    for (int i = 0; i < count; ++i) {
        (*blocks[0])[i] = 1.0f - std::max(position[i], 0.0f);
        (*blocks[1])[i] = 1.0f + std::min(position[i], 0.0f);
    }
    blocks[0]->setConstant(position.isConstant());
    blocks[1]->setConstant(position.isConstant());
}
