#pragma once

#include "wave/Producer.h"

#include <vector>

/// Sums its inputs with fixed gains. Thread: audio, but for `add`.
class StaticMixer : public wave::Source {
public:
    using wave::Source::Source;

    /// Appends an input; null is skipped. Thread: main.
    void add(float gain, wave::Producer* source) { inputs.push_back({gain, source}); }

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    struct Pair {
        float gain;
        wave::Producer* source;
    };
    std::vector<Pair> inputs;
};
