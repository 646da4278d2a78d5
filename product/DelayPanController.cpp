#include "product/DelayPanController.h"

#include <algorithm>

void DelayPanController::generate(wave::Block** blocks, int count, int) noexcept
{
    const wave::Block& position = pan.pull(count);
    if (position.isConstant()) {
        steady[0].fill(*blocks[0], 1.0f - std::max(position[0], 0.0f), count);
        steady[1].fill(*blocks[1], 1.0f + std::min(position[0], 0.0f), count);
        return;
    }
    for (int i = 0; i < count; ++i) {
        (*blocks[0])[i] = 1.0f - std::max(position[i], 0.0f);
        (*blocks[1])[i] = 1.0f + std::min(position[i], 0.0f);
    }
    for (int channel = 0; channel < 2; ++channel) {
        blocks[channel]->setConstant(false);
        steady[channel].forget();
    }
}
