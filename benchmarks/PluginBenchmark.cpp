// The built module through a host's eyes.
#include "PluginPatch.h"

namespace {

void playPatch(benchmark::State& state, const PluginPatch::Settings& settings)
{
    PluginPatch patch(settings);
    patch.measure(state);
}

void defaults(benchmark::State& state) { playPatch(state, {}); }
BENCHMARK(defaults)->Name("plug-in, defaults, blocks of 128");

void pingPong(benchmark::State& state)
{
    playPatch(state, {{"Delay 1 Feedback", "0.3"},
                      {"Delay 1 Cross Feedback", "0.4"},
                      {"Delay 2 Cross Feedback", "0.4"},
                      {"Delay 1 Pan", "-1"},
                      {"Delay 2 Pan", "1"},
                      {"Channel Mode", "Mid/Side"}});
}
BENCHMARK(pingPong)->Name("plug-in, ping-pong in mid/side");

void makeInstance(benchmark::State& state)
{
    const ClapModule module(SORDELIN_MODULE);
    const ClapInstance first(module);
    for (auto _ : state) {
        ClapInstance instance(module);
        instance.activate(48000.0, 1, 128);
        benchmark::DoNotOptimize(&instance);
    }
}
BENCHMARK(makeInstance)->Name("make, activate and destroy an instance")->Unit(benchmark::kMillisecond);

void scanModule(benchmark::State& state)
{
    for (auto _ : state) {
        const ClapModule module(SORDELIN_MODULE);
        benchmark::DoNotOptimize(module.descriptor().name);
    }
}
BENCHMARK(scanModule)->Name("load, read the descriptor, unload")->Unit(benchmark::kMillisecond);

}  // namespace
