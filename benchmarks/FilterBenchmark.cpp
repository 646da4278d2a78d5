// Both filters of the product on four lanes each, at 48 kHz in sub-blocks of 128, beside the bare arithmetic
// of their loops: three rounds a sample for two filters, with nothing around them.
#include "FrameRate.h"
#include "dsp/FilterStyles.h"
#include "dsp/MultiDesignFilter.h"
#include "foundation/Float4.h"
#include "foundation/FloatingPointScope.h"

#include <array>
#include <cmath>
#include <memory>

namespace {

constexpr int block = 128;

struct Steady : wave::Source {
    Steady(wave::Environment& owner, float value) : Source(owner) { ownBlock().fill(value, block); }
    void generate(wave::Block*, int, int) noexcept override {}
};

/// A tone of 375 Hz around a middle: one period in a sub-block.
struct Moving : wave::Source {
    Moving(wave::Environment& owner, float middle, float amplitude) : Source(owner)
    {
        for (int i = 0; i < block; ++i)
            ownBlock()[i] = middle + amplitude * std::sin(2.0f * 3.14159265f * static_cast<float>(i) / block);
        ownBlock().setConstant(false);
    }
    void generate(wave::Block*, int, int) noexcept override {}
};

const StateVariableTables& tables()
{
    static const StateVariableTables shared;
    return shared;
}

const FilterStyles& styles()
{
    static const FilterStyles shared;
    return shared;
}

/// Two filter numbers, each with its four lanes, in series.
struct TwoFilters {
    TwoFilters()
    {
        environment.setSampleRate(48000.0f);
        for (std::size_t number = 0; number < 2; ++number) {
            shared[number] = std::make_unique<DesignFilter>(environment, tables(), styles().at(1));
            for (std::size_t lane = 0; lane < 4; ++lane) {
                auto& filter = filters[number][lane];
                filter = std::make_unique<MultiDesignFilter>(environment, *shared[number], styles());
                filter->characteristic.assign(1);
                filter->frequency.connect(&frequency);
                filter->peak.connect(&peak);
                filter->input = number == 0 ? static_cast<wave::Producer*>(&input) : filters[0][lane].get();
            }
        }
    }
    void runTogether() { shared[1]->follow(*shared[0]); }
    void useKernel(const StateVariableKernel& kernel)
    {
        for (auto& filter : shared)
            filter->useKernel(kernel);
    }
    void connect(wave::Producer& source)
    {
        for (auto& lanes : filters) {
            for (auto& filter : lanes)
                filter->frequency.connect(&source);
        }
    }
    void run()
    {
        const FloatingPointScope scope;
        environment.nextGeneration();
        for (auto& filter : filters[1])
            benchmark::DoNotOptimize(filter->pull(block).data());
        environment.run(block, false);
    }

    wave::Environment environment;
    Moving input{environment, 0.0f, 0.25f};
    Steady frequency{environment, 11.0f};
    Steady peak{environment, 0.3f};
    Moving sweep{environment, 10.0f, 0.5f};  // half an octave up and down
    std::unique_ptr<DesignFilter> shared[2];
    std::unique_ptr<MultiDesignFilter> filters[2][4];
};

void bareLoops(benchmark::State& state)
{
    const FloatingPointScope scope;
    alignas(16) float samples[block * 4];
    for (int i = 0; i < block * 4; ++i)
        samples[i] = static_cast<float>(i % 100) / 200.0f - 0.25f;
    Float4 band[2], low[2];
    const Float4 f(0.09f), q(0.5f), k(0.01f), one(1.0f), ten(10.0f);
    for (auto _ : state) {
        for (int number = 0; number < 2; ++number) {
            Float4 b = band[number], l = low[number];
            for (int i = 0; i < block; ++i) {
                const Float4 x = Float4::load(samples + 4 * i);
                for (int round = 0; round < 3; ++round) {
                    const Float4 bent = b - k * (b * b * b);
                    l = l + f * b;
                    b = bent + (x - q * b - l) * f;
                }
                b = clamp(b, Float4(-1.0f), one);
                l = clamp(l, Float4(-10.0f), ten);
                l.store(samples + 4 * i);
            }
            band[number] = b;
            low[number] = l;
        }
        benchmark::DoNotOptimize(samples);
        benchmark::ClobberMemory();
    }
    countFrames(state, block);
}
BENCHMARK(bareLoops)->Name("floor: the bare loops of both filters");

void steadyFilters(benchmark::State& state, const StateVariableKernel& kernel)
{
    TwoFilters filters;
    filters.useKernel(kernel);
    filters.runTogether();
    for (auto _ : state)
        filters.run();
    countFrames(state, block);
}
BENCHMARK_CAPTURE(steadyFilters, common, StateVariableKernel::common())
    ->Name("both filters, 12 dB, signals at rest");
BENCHMARK_CAPTURE(steadyFilters, best, StateVariableKernel::best())
    ->Name("both filters, 12 dB, signals at rest, best loop");

void sweptFilters(benchmark::State& state, const StateVariableKernel& kernel)
{
    TwoFilters filters;
    filters.useKernel(kernel);
    filters.runTogether();
    filters.connect(filters.sweep);
    for (auto _ : state)
        filters.run();
    countFrames(state, block);
}
BENCHMARK_CAPTURE(sweptFilters, common, StateVariableKernel::common())
    ->Name("both filters, 12 dB, swept at audio rate");
BENCHMARK_CAPTURE(sweptFilters, best, StateVariableKernel::best())
    ->Name("both filters, 12 dB, swept at audio rate, best loop");

}  // namespace
