#include "clap_host/BlockRenderer.h"

#include "clap_host/ClapHostError.h"

#include <algorithm>

namespace {

constexpr std::uint64_t bothChannels = 3;  // as bits of a constant mask

void requireStereoEffect(const std::vector<clap_audio_port_info_t>& inputs,
                         const std::vector<clap_audio_port_info_t>& outputs)
{
    const auto stereo = [](const clap_audio_port_info_t& port) { return port.channel_count == 2; };
    if (inputs.empty() || inputs.size() > 2 || outputs.size() != 1 || !std::ranges::all_of(inputs, stereo) ||
        !std::ranges::all_of(outputs, stereo))
        throw ClapHostError("the plug-in is no stereo effect with at most one side chain");
}

StereoView advanced(StereoView view, std::int64_t frames) noexcept
{
    return view.left ? StereoView{view.left + frames, view.right + frames} : view;
}

}  // namespace

BlockRenderer::BlockRenderer(ClapInstance& renderedInstance, const Settings& settings)
    : instance(renderedInstance), blockFrames(settings.blockFrames), silence(settings.blockFrames)
{
    const auto inputs = instance.inputPorts();
    requireStereoEffect(inputs, instance.outputPorts());
    hasSideChain = inputs.size() == 2;
    if (settings.tempoBpm)
        clock.emplace(*settings.tempoBpm, settings.sampleRate, settings.songPositionBeats);
    instance.activate(settings.sampleRate, 1, blockFrames);
    instance.startProcessing();
}

BlockRenderer::~BlockRenderer()
{
    instance.stopProcessing();
    instance.deactivate();
}

void BlockRenderer::schedule(std::vector<TimedEvent> events)
{
    std::ranges::stable_sort(events, {}, &TimedEvent::frame);
    blockEvents.reserve(events.size());
    const auto first = std::ranges::lower_bound(events, nextFrame, {}, &TimedEvent::frame);
    nextEvent = static_cast<std::size_t>(first - events.begin());
    scheduled = std::move(events);
}

void BlockRenderer::render(StereoView input, StereoView sideChain, float* left, float* right,
                           std::int64_t frames)
{
    for (std::int64_t done = 0; done < frames;) {
        const auto count = static_cast<std::uint32_t>(std::min<std::int64_t>(blockFrames, frames - done));
        renderBlock(advanced(input, done), advanced(sideChain, done), left + done, right + done, count);
        done += count;
    }
}

void BlockRenderer::renderBlock(StereoView input, StereoView sideChain, float* left, float* right,
                                std::uint32_t frames)
{
    // CLAP declares inputs as writable pointers, but a plug-in may not write there.
    const auto writable = [](const float* samples) { return const_cast<float*>(samples); };
    const StereoView quiet{silence.data(), silence.data()};
    const StereoView main = input.left ? input : quiet;
    const StereoView side = sideChain.left ? sideChain : quiet;
    std::array mainChannels{writable(main.left), writable(main.right)};
    std::array sideChannels{writable(side.left), writable(side.right)};
    std::array outChannels{left, right};

    const std::array inputs{
        clap_audio_buffer_t{mainChannels.data(), nullptr, 2, 0, input.left ? 0 : bothChannels},
        clap_audio_buffer_t{sideChannels.data(), nullptr, 2, 0, sideChain.left ? 0 : bothChannels}};
    std::array outputs{clap_audio_buffer_t{outChannels.data(), nullptr, 2, 0, 0}};

    collectEvents(frames);
    clap_event_transport_t transport{};
    if (clock)
        transport = clock->at(nextFrame);

    ClapBlock block;
    block.inputs = std::span(inputs).first(hasSideChain ? 2 : 1);
    block.outputs = outputs;
    block.frames = frames;
    block.events = &blockEvents;
    block.transport = clock ? &transport : nullptr;
    block.steadyTime = nextFrame;
    if (instance.process(block) == CLAP_PROCESS_ERROR)
        throw ClapHostError("the plug-in reported an error while processing");
    nextFrame += frames;
}

void BlockRenderer::collectEvents(std::uint32_t frames)
{
    blockEvents.clear();
    for (; nextEvent < scheduled.size() && scheduled[nextEvent].frame < nextFrame + frames; ++nextEvent) {
        ClapEvent event = scheduled[nextEvent].event;
        event.header.time = static_cast<std::uint32_t>(scheduled[nextEvent].frame - nextFrame);
        blockEvents.add(event);
    }
}
