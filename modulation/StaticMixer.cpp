#include "modulation/StaticMixer.h"

#include "foundation/Tolerance.h"

#include <algorithm>

void StaticMixer::generate(wave::Block* block, int count, int) noexcept
{
    wave::Block* untouched = nullptr;  // the only input so far, at unity
    bool empty = true;
    int width = 1;  // while all inputs are constant one sample stands for all
    float* y = block->data();
    for (const Pair& pair : inputs) {
        if (!pair.source)
            continue;
        wave::Block& in = pair.source->pull(count);
        if (empty && isNear(pair.gain, 1.0f)) {
            untouched = &in;
            empty = false;
            width = in.isConstant() ? 1 : count;
            continue;
        }
        if (untouched)
            std::copy_n(untouched->data(), width, y);
        untouched = nullptr;
        if (width == 1 && !in.isConstant()) {
            std::fill_n(y, count, empty ? 0.0f : y[0]);
            width = count;
        }
        for (int i = 0; i < width; ++i)
            y[i] = empty ? in[i] * pair.gain : y[i] + in[i] * pair.gain;
        empty = false;
    }
    if (empty) {
        show(environment().silentBlock());
    } else if (untouched) {
        show(*untouched);
    } else if (width == 1) {
        block->fill(y[0], count);
    } else {
        block->setConstant(false);
    }
}
