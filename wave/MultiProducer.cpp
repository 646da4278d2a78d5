#include "wave/MultiProducer.h"

namespace wave {

MultiProducer::Output::Output(MultiProducer& multiProducer, int outputIndex)
    : Producer(multiProducer.env, OwnBlock::None), index(outputIndex), owner(multiProducer)
{}

void MultiProducer::Output::generate(Block*, int count, int flags) noexcept
{
    for (std::size_t i = 0; i < owner.ownBlocks.size(); ++i)
        owner.currentBlocks[i] = owner.ownBlocks[i].get();
    owner.generate(owner.currentBlocks.data(), count, flags);
    for (std::size_t i = 0; i < owner.outputs.size(); ++i)
        owner.outputs[i]->show(*owner.currentBlocks[i]);
}

MultiProducer::MultiProducer(Environment& owner, int outputCount) : env(owner)
{
    for (int i = 0; i < outputCount; ++i) {
        ownBlocks.push_back(std::make_unique<Block>(env));
        outputs.push_back(std::make_unique<Output>(*this, i));
        currentBlocks.push_back(&env.silentBlock());
    }
}

float MultiProducer::currentValue(int outputIndex) noexcept
{
    return (*currentBlocks[static_cast<std::size_t>(outputIndex)])[0];
}

MultiFilter::MultiFilter(Environment& owner, int channelCount)
    : MultiProducer(owner, channelCount),
      inputBlocks(static_cast<std::size_t>(channelCount), nullptr),
      inputs(static_cast<std::size_t>(channelCount), nullptr)
{}

void MultiFilter::generate(Block** blocks, int count, int flags) noexcept
{
    for (std::size_t i = 0; i < inputs.size(); ++i)
        inputBlocks[i] = inputs[i] ? &inputs[i]->pull(count) : &environment().silentBlock();
    filter(inputBlocks.data(), blocks, count, flags);
}

}  // namespace wave
