#pragma once

#include <benchmark/benchmark.h>

/// Shows the time per stereo frame: "1.25n/frame" is 1.25 ns.
inline void countFrames(benchmark::State& state, double framesPerIteration)
{
    state.counters["frame"] = benchmark::Counter(
        framesPerIteration, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
