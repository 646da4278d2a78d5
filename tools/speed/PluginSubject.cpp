#include "speed/PluginSubject.h"

#include "clap_host/ClapHostError.h"
#include "speed/SpeedInput.h"

namespace {

void flushSettings(ClapInstance& instance, const SpeedSettings& settings)
{
    EventList events;
    for (const auto& [name, text] : settings) {
        const clap_id id = instance.parameters().require(name).id;
        const auto value = instance.parameters().fromText(id, text);
        if (!value)
            throw ClapHostError(name + " can't be " + text);
        events.add(parameterEvent(0, id, *value));
    }
    instance.flush(events);
}

BlockRenderer::Settings rendering(std::uint32_t blockFrames)
{
    return {SpeedSubject::sampleRate, blockFrames, 120.0, 0.0};
}

}  // namespace

PluginSubject::PluginSubject(std::string subjectName, const ClapModule& module, const SpeedSettings& settings,
                             std::uint32_t blockFrames)
    : SpeedSubject(std::move(subjectName)), instance(module)
{
    flushSettings(instance, settings);
    renderer.emplace(instance, rendering(blockFrames));
}

PluginSubject::PluginSubject(std::string subjectName, const ClapModule& module,
                             const std::vector<ClapEvent>& values, std::uint32_t blockFrames)
    : SpeedSubject(std::move(subjectName)), instance(module)
{
    EventList events(values.size());
    for (const ClapEvent& value : values)
        events.add(value);
    instance.flush(events);
    renderer.emplace(instance, rendering(blockFrames));
}

void PluginSubject::set(const SpeedSettings& settings) { flushSettings(instance, settings); }

void PluginSubject::warmUp()
{
    constexpr int longestDelayStretches = 6;
    for (int i = 0; i < longestDelayStretches; ++i)
        playStretch();
}

void PluginSubject::playStretch()
{
    const float* const samples = speedInput().data();
    renderer->render({samples, samples}, {}, left.data(), right.data(), stretchFrames);
}

MonoPairSubject::MonoPairSubject(std::string subjectName, const ClapModule& module,
                                 std::uint32_t subjectBlockFrames)
    : SpeedSubject(std::move(subjectName)),
      blockFrames(subjectBlockFrames),
      instances{ClapInstance(module), ClapInstance(module)}
{
    for (ClapInstance& instance : instances) {
        requireOneChannel(instance);
        instance.activate(sampleRate, 1, blockFrames);
        instance.startProcessing();
    }
}

void MonoPairSubject::requireOneChannel(const ClapInstance& instance)
{
    const auto isMono = [](const std::vector<clap_audio_port_info_t>& ports) {
        return ports.size() == 1 && ports.front().channel_count == 1;
    };
    if (!isMono(instance.inputPorts()) || !isMono(instance.outputPorts()))
        throw ClapHostError("the plug-in to compare with doesn't have one channel");
}

void MonoPairSubject::playStretch()
{
    for (std::int64_t done = 0; done < stretchFrames; done += blockFrames) {
        for (ClapInstance& instance : instances) {
            // CLAP declares inputs as writable, but a plug-in may not write there.
            float* in = const_cast<float*>(speedInput().data()) + done;
            float* out = output.data() + done;
            const clap_audio_buffer_t input{&in, nullptr, 1, 0, 0};
            clap_audio_buffer_t result{&out, nullptr, 1, 0, 0};
            ClapBlock block;
            block.inputs = {&input, 1};
            block.outputs = {&result, 1};
            block.frames = blockFrames;
            instance.process(block);
        }
    }
}
