#pragma once

#include "wave/Producer.h"

#include <memory>
#include <vector>

namespace wave {

/// A component whose outputs are computed together: reading one computes all of them, once.
class MultiProducer : public Component {
public:
    class Output : public Producer {
    public:
        Output(MultiProducer& multiProducer, int outputIndex);
        float currentValue() noexcept REALTIME override { return owner.currentValue(index); }
        void reset() noexcept REALTIME override { owner.reset(); }

    protected:
        void generate(Block* block, int count, int flags) noexcept REALTIME override;

    private:
        friend class MultiProducer;
        int index;
        MultiProducer& owner;
    };

    explicit MultiProducer(Environment& owner, int outputCount = 2);

    Producer& output(int index) noexcept REALTIME { return *outputs[static_cast<std::size_t>(index)]; }
    int outputCount() const noexcept REALTIME { return static_cast<int>(outputs.size()); }
    virtual float currentValue(int outputIndex) noexcept REALTIME;
    virtual void reset() noexcept REALTIME {}
    Environment& environment() const noexcept REALTIME { return env; }

protected:
    /// @param blocks  one per output: its own block at first. Writes `count` samples to each, or replaces the
    /// entry
    ///                by the block to show.
    virtual void generate(Block** blocks, int count, int flags) noexcept REALTIME = 0;

private:
    Environment& env;
    std::vector<std::unique_ptr<Block>> ownBlocks;
    std::vector<std::unique_ptr<Output>> outputs;
    std::vector<Block*> currentBlocks;
};

/// A multi-producer with as many inputs as outputs.
class MultiFilter : public MultiProducer {
public:
    explicit MultiFilter(Environment& owner, int channelCount = 2);
    void setInput(int index, Producer& source) noexcept { inputs[static_cast<std::size_t>(index)] = &source; }

protected:
    void generate(Block** blocks, int count, int flags) noexcept REALTIME override;
    virtual void filter(Block* const* in, Block** out, int count, int flags) noexcept REALTIME = 0;

private:
    std::vector<Block*> inputBlocks;
    std::vector<Producer*> inputs;
};

}  // namespace wave
