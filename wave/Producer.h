#pragma once

#include "wave/Environment.h"

#include <optional>

namespace wave {

/// The common root of what an engine is made of.
class Component {
public:
    Component() = default;
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;
    virtual ~Component() = default;

    /// In the engines' own memory. Thread: not audio.
    static void* operator new(std::size_t bytes);
    static void operator delete(void* place, std::size_t bytes) noexcept;
};

/// A component with one output signal. Whoever reads the signal pulls it; it is computed at most once in a
/// sub-block, however many read it. All pulls of one sub-block ask for the same count.
class Producer : public Component {
public:
    enum class OwnBlock {
        Make,
        Passing,  // nobody looks at it after the sub-block: it may lie in working memory
        None,     // only ever shows blocks of others
    };

    explicit Producer(Environment& owner, OwnBlock ownBlockKind = OwnBlock::Make);
    ~Producer() override;

    /// Computes the signal of this sub-block if nobody has yet, and returns it. `count` samples are valid.
    Block& pull(int count) noexcept REALTIME
    {
        if (generation != env.generationNumber())
            compute(count, Environment::Pulled);
        return *current;
    }
    /// The block of the last pull.
    Block& currentBlock() noexcept REALTIME { return *current; }
    bool isComputed() const noexcept REALTIME { return generation == env.generationNumber(); }

    /// The producer whose block the next pull shows as it is: this one, or the one it passes on.
    virtual Producer& origin() noexcept REALTIME { return *this; }
    /// Sample 0 of the present block.
    virtual float currentValue() noexcept REALTIME;
    /// False while there is a tail to play.
    virtual bool isIdle() const noexcept REALTIME { return true; }
    /// A disabled component isn't run by the schedule; it is reset when it comes back.
    virtual void setEnabled(bool newEnabled) noexcept REALTIME;
    bool isEnabled() const noexcept REALTIME { return enabled; }
    /// Clears all signal state; derives anew what depends on the sample rate.
    virtual void reset() noexcept REALTIME {}

    Environment& environment() const noexcept REALTIME { return env; }

protected:
    /// Writes `count` samples into `block`, or shows another block instead.
    /// @param flags  how it is run: Environment::Pulled, Unread or SecondPass
    virtual void generate(Block* block, int count, int flags) noexcept REALTIME = 0;

    /// Makes `block` the output of this sub-block, without a copy.
    void show(Block& block) noexcept REALTIME
    {
        current = &block;
        generation = env.generationNumber();
    }
    Block& ownBlock() noexcept REALTIME { return *own; }

    /// Components with state call this in their constructor.
    void registerForReset();
    /// Runs the component in every sub-block: order 0 in the second pass, before all others; order 1 next, if
    /// nobody read it; any other order last, if nobody read it. A second call changes the order. Thread:
    /// main.
    void runAlways(int newOrder);

private:
    friend class Environment;
    void compute(int count, int flags) noexcept REALTIME
    {
        Block* const block = own ? &*own : nullptr;
        current = block;
        generate(block, count, flags);
        generation = env.generationNumber();
    }
    void noteOn(MemoryTrail& trail) const noexcept REALTIME;
    void runScheduled(int count) noexcept REALTIME;

    Environment& env;
    std::uint32_t generation = 0;  // of `current`
    int order = 0;
    Block* current;
    std::optional<Block> own;  // in here, as each piece of memory elsewhere is one more to wait for
    bool enabled = true;
    bool scheduled = false;
    bool resettable = false;
};

/// The consuming side of a component: its one input.
class Consumer {
public:
    Producer* input = nullptr;

protected:
    ~Consumer() = default;
};

/// A producer without an audio input.
class Source : public Producer {
public:
    using Producer::Producer;
};

/// A sink: an input and no signal of its own.
class Output : public Component, public Consumer {};

/// Asked before a component pulls its input: true means silence, and no work.
class MuteController {
public:
    virtual ~MuteController() = default;
    virtual bool isMuted() noexcept REALTIME = 0;
};

}  // namespace wave
