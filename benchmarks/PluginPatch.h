#pragma once

#include "FrameRate.h"
#include "clap_host/BlockRenderer.h"
#include "clap_host/ClapInstance.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// One instance of the built module that plays noise-like input at 48 kHz.
class PluginPatch {
public:
    using Settings = std::vector<std::pair<std::string, std::string>>;  // parameters and their texts

    explicit PluginPatch(const Settings& settings) : instance(module)
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

    /// Times a steady patch.
    void measure(benchmark::State& state)
    {
        for (int i = 0; i < 20; ++i)
            play();
        for (auto _ : state)
            play();
        countFrames(state, frames);
    }

private:
    static constexpr std::int64_t frames = 4800;

    void play() { renderer->render({input.data(), input.data()}, {}, left.data(), right.data(), frames); }

    ClapModule module{SORDELIN_MODULE};
    ClapInstance instance;
    std::vector<float> input;
    std::vector<float> left = std::vector<float>(frames);
    std::vector<float> right = std::vector<float>(frames);
    std::optional<BlockRenderer> renderer;
};
