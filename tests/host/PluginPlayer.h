#pragma once

#include "clap_host/BlockRenderer.h"
#include "clap_host/ClapHostError.h"
#include "clap_host/ClapInstance.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The built module, loaded as a host loads it, with one instance to play through.
class PluginPlayer {
public:
    struct Setup {
        double sampleRate = 48000.0;
        std::uint32_t block = 128;
        std::optional<double> tempo = std::nullopt;
    };
    using Stereo = std::pair<std::vector<float>, std::vector<float>>;

    PluginPlayer() : PluginPlayer(Setup{}) {}
    explicit PluginPlayer(const Setup& playerSetup) : setup(playerSetup), instance(module) {}

    /// Sets a parameter by its text, before the first block or between two.
    void set(const std::string& name, const std::string& text)
    {
        const ClapParameter& parameter = instance.parameters().require(name);
        const auto value = instance.parameters().fromText(parameter.id, text);
        if (!value)
            throw ClapHostError("can't read " + text);
        events.clear();
        events.add(parameterEvent(0, parameter.id, *value));
        instance.flush(events);
    }
    /// Takes both filters out of the way, where a test is about what is around them.
    void disableFilters()
    {
        set("Filter 1 Enabled", "Disabled");
        set("Filter 2 Enabled", "Disabled");
    }
    clap_id id(const std::string& name) { return instance.parameters().require(name).id; }
    /// An event of a value by its text, `frame` frames from now.
    TimedEvent change(std::int64_t frame, const std::string& name, const std::string& text)
    {
        const clap_id parameter = id(name);
        const double value = instance.parameters().fromText(parameter, text).value();
        return {renderer().position() + frame, parameterEvent(0, parameter, value)};
    }
    void schedule(std::vector<TimedEvent> automation) { renderer().schedule(std::move(automation)); }

    Stereo play(const std::vector<float>& left, const std::vector<float>& right)
    {
        Stereo out{std::vector<float>(left.size()), std::vector<float>(left.size())};
        renderer().render({left.data(), right.data()}, sideChain, out.first.data(), out.second.data(),
                          static_cast<std::int64_t>(left.size()));
        return out;
    }
    /// The same signal on both channels; the left output.
    std::vector<float> play(const std::vector<float>& both) { return play(both, both).first; }

    BlockRenderer& renderer()
    {
        if (!blockRenderer) {
            BlockRenderer::Settings settings;
            settings.sampleRate = setup.sampleRate;
            settings.blockFrames = setup.block;
            settings.tempoBpm = setup.tempo;
            blockRenderer = std::make_unique<BlockRenderer>(instance, settings);
        }
        return *blockRenderer;
    }

    Setup setup;
    ClapModule module{SORDELIN_MODULE};
    ClapInstance instance;
    StereoView sideChain{};

private:
    EventList events;
    std::unique_ptr<BlockRenderer> blockRenderer;
};
