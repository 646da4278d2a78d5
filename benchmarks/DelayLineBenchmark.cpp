// Two delay lines at 48 kHz in sub-blocks of 128, beside the floor that no delay can beat: both channels
// copied into and out of two rings of the same size.
#include "FrameRate.h"
#include "dsp/DelayLine.h"
#include "wave/Input.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr int block = 128;
constexpr int ringLength = 262144;
constexpr int delaySamples = 16800;  // 350 ms

/// A block that is always the same: what it costs to make a signal isn't the question.
class Ready : public wave::Source {
public:
    Ready(wave::Environment& owner, float value) : Source(owner) { ownBlock().fill(value, block); }
    float value() { return ownBlock()[0]; }
    void set(float value) { ownBlock().fill(value, block); }

protected:
    void generate(wave::Block*, int, int) noexcept override {}
};

struct TwoLines {
    TwoLines()
    {
        environment.setSampleRate(48000.0f);
        for (auto& line : lines) {
            line = std::make_unique<DelayLine>(environment);
            line->input = &input;
            line->delayTime.connect(&time);
        }
    }
    void run()
    {
        environment.nextGeneration();
        for (auto& line : lines)
            benchmark::DoNotOptimize(line->pull(block).data());
        environment.run(block, false);
    }

    wave::Environment environment;
    Ready input{environment, 0.25f};
    Ready time{environment, 350.0f};
    std::unique_ptr<DelayLine> lines[2];
};

void copyThroughTwoRings(benchmark::State& state)
{
    std::vector<float> rings[2] = {std::vector<float>(ringLength), std::vector<float>(ringLength)};
    float in[block] = {};
    float out[2][block];
    int place = 0;
    const auto bytes = sizeof in;
    for (auto _ : state) {
        for (int c = 0; c < 2; ++c) {
            const int from = (place - delaySamples + ringLength) % ringLength;
            const int first = std::min(block, ringLength - from);
            const float* ring = rings[c].data();
            std::memcpy(out[c], ring + from, static_cast<std::size_t>(first) * sizeof(float));
            std::memcpy(out[c] + first, ring, static_cast<std::size_t>(block - first) * sizeof(float));
            std::memcpy(rings[c].data() + place, in, bytes);
            benchmark::DoNotOptimize(out[c]);
            benchmark::ClobberMemory();
        }
        place = (place + block) % ringLength;
    }
    countFrames(state, block);
}
BENCHMARK(copyThroughTwoRings)->Name("floor: copy through two rings");

void settled(benchmark::State& state)
{
    TwoLines lines;
    for (auto _ : state)
        lines.run();
    countFrames(state, block);
}
BENCHMARK(settled)->Name("lines settled");

void gliding(benchmark::State& state, DelayLine::ReadType type)
{
    TwoLines lines;
    for (auto& line : lines.lines)
        line->readType.assign(type);
    lines.run();
    int count = 0;
    for (auto _ : state) {
        if (count++ % 64 == 0)  // a new time before the last one has been reached
            lines.time.set(lines.time.value() > 400.0f ? 350.0f : 450.0f);
        lines.run();
    }
    countFrames(state, block);
}
BENCHMARK_CAPTURE(gliding, tape, DelayLine::ReadType::Tape)->Name("lines gliding, Tape");
BENCHMARK_CAPTURE(gliding, stretch, DelayLine::ReadType::Stretch)->Name("lines gliding, Stretch");

void frozen(benchmark::State& state)
{
    TwoLines lines;
    for (int i = 0; i < 500; ++i)
        lines.run();
    for (auto& line : lines.lines)
        line->input = line.get();
    for (auto _ : state)
        lines.run();
    countFrames(state, block);
}
BENCHMARK(frozen)->Name("lines frozen");

}  // namespace
