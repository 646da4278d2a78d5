#include "modulation/Router.h"

#include <algorithm>

Router::Router(wave::Environment& owner, int inputCount)
    : Source(owner, OwnBlock::Passing), index(0, this), fadeMs(20.0f, this)
{
    for (int i = 0; i < inputCount; ++i)
        inputs.push_back(std::make_unique<RouterInput>(owner, i == 0 ? 1.0f : 0.0f));
}

void Router::setSource(int input, wave::Producer& source)
{
    inputs[static_cast<std::size_t>(input)]->source = &source;
    solo = nullptr;
}

void Router::propertyChanged(AbstractProperty&)
{
    for (std::size_t i = 0; i < inputs.size(); ++i)
        inputs[i]->gain.setValue(static_cast<int>(i) == index.value() ? 1.0f : 0.0f, fadeMs.value());
    solo = nullptr;
}

void Router::generate(wave::Block* block, int count, int) noexcept
{
    if (solo) {
        show(solo->pull(count));
        return;
    }
    RouterInput* untouched = nullptr;  // the only input so far, at unity
    bool empty = true;
    bool constant = true;
    float* y = block->data();
    for (const auto& one : inputs) {
        const wave::Block& gain = one->gain.render(count);
        if (!one->source || (gain.isConstant() && isNear(gain[0], 0.0f)))
            continue;
        const wave::Block& in = one->source->pull(count);
        constant = constant && in.isConstant() && gain.isConstant();
        if (empty && gain.isConstant() && isNear(gain[0], 1.0f)) {
            untouched = one.get();
        } else {
            if (untouched)
                std::copy_n(untouched->source->currentBlock().data(), count, y);
            untouched = nullptr;
            for (int i = 0; i < count; ++i)
                y[i] = empty ? in[i] * gain[i] : y[i] + in[i] * gain[i];
        }
        empty = false;
    }
    block->setConstant(constant);
    if (empty) {
        show(environment().silentBlock());
    } else if (untouched) {
        solo = untouched->source;
        show(solo->currentBlock());
    }
}
