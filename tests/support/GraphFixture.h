#pragma once

#include "wave/Environment.h"
#include "wave/Producer.h"

#include <algorithm>
#include <functional>
#include <vector>

/// A producer that computes each sample from its clock time, and counts how often it ran.
class FunctionProducer : public wave::Source {
public:
    FunctionProducer(wave::Environment& owner, std::function<float(std::uint64_t)> sampleAt)
        : Source(owner), function(std::move(sampleAt))
    {}
    using wave::Producer::registerForReset;
    using wave::Producer::runAlways;

    void reset() noexcept override { ++resets; }

    std::vector<int> runs;  // the flags of each run
    int resets = 0;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept override
    {
        runs.push_back(flags);
        bool constant = true;
        for (int i = 0; i < count; ++i) {
            (*block)[i] = function(environment().now() + static_cast<std::uint64_t>(i));
            constant = constant && (*block)[i] == (*block)[0];
        }
        block->setConstant(constant);
    }

private:
    std::function<float(std::uint64_t)> function;
};

/// Plays a vector, then silence.
inline std::function<float(std::uint64_t)> playing(std::vector<float> signal)
{
    return [kept = std::move(signal)](std::uint64_t t) { return t < kept.size() ? kept[t] : 0.0f; };
}

/// Drives a graph as the processor does, in blocks of 1..128 samples.
struct GraphFixture {
    wave::Environment environment;

    /// Renders `samples` samples of `producer`. `before` may change the graph at the start of each block.
    std::vector<float> render(wave::Producer& producer, int samples, int blockSize = 128,
                              const std::function<void(std::uint64_t)>& before = {})
    {
        std::vector<float> out;
        while (static_cast<int>(out.size()) < samples) {
            const int count = std::min(blockSize, samples - static_cast<int>(out.size()));
            environment.nextGeneration();
            if (before)
                before(environment.now());
            const wave::Block& block = producer.pull(count);
            out.insert(out.end(), block.data(), block.data() + count);
            environment.run(count, false);
        }
        return out;
    }

    /// Lets time pass in which nothing runs.
    void skip(int samples)
    {
        environment.nextGeneration();
        environment.run(samples, true);
    }
};
