// The built module through a host's eyes.
#include "FrameRate.h"
#include "clap_host/BlockRenderer.h"
#include "clap_host/ClapInstance.h"

#include <optional>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t frames = 4800;

/// One instance with these settings that plays noise-like input at 48 kHz.
struct Patch {
    explicit Patch(const std::vector<std::pair<std::string, std::string>>& settings) : instance(module)
    {
        EventList events;
        for (const auto& [name, text] : settings) {
            const clap_id id = instance.parameters().require(name).id;
            events.add(parameterEvent(0, id, instance.parameters().fromText(id, text).value()));
        }
        instance.flush(events);
        for (std::int64_t i = 0; i < frames; ++i)
            input.push_back(static_cast<float>((i * 7919) % 1000) / 2000.0f - 0.25f);
        renderer.emplace(instance, BlockRenderer::Settings{});
    }
    void play() { renderer->render({input.data(), input.data()}, {}, left.data(), right.data(), frames); }

    ClapModule module{SORDELIN_MODULE};
    ClapInstance instance;
    std::vector<float> input;
    std::vector<float> left = std::vector<float>(frames);
    std::vector<float> right = std::vector<float>(frames);
    std::optional<BlockRenderer> renderer;
};

void playPatch(benchmark::State& state, const std::vector<std::pair<std::string, std::string>>& settings)
{
    Patch patch(settings);
    for (int i = 0; i < 20; ++i)
        patch.play();
    for (auto _ : state)
        patch.play();
    countFrames(state, frames);
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
