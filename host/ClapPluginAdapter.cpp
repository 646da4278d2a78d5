#include "host/ClapPluginAdapter.h"

#include "foundation/FloatingPointScope.h"
#include "foundation/Tolerance.h"
#include "product/SordelinPlugin.h"
#include "product/SordelinProcessor.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// Hz. No interface runs faster than 768 kHz; the delay lines of a rate far above would take all memory.
constexpr float lowestSampleRate = 1.0f;
constexpr float highestSampleRate = 4.0f * 768000.0f;

}  // namespace

// Life.

const clap_plugin_t* ClapPluginAdapter::create(const clap_host_t& host,
                                               const clap_plugin_descriptor_t& descriptor)
{
    return &(new ClapPluginAdapter(host, descriptor))->clapPlugin;
}

ClapPluginAdapter::ClapPluginAdapter(const clap_host_t& clapHost, const clap_plugin_descriptor_t& descriptor)
    : host(clapHost)
{
    clapPlugin.desc = &descriptor;
    clapPlugin.plugin_data = this;
    clapPlugin.init = [](const clap_plugin_t* p) { return of(p).init(); };
    clapPlugin.destroy = [](const clap_plugin_t* p) { delete &of(p); };
    clapPlugin.activate = [](const clap_plugin_t* p, double rate, uint32_t, uint32_t maxFrames) {
        return onMainThread(p).activate(rate, maxFrames);
    };
    clapPlugin.deactivate = [](const clap_plugin_t* p) { onMainThread(p).deactivate(); };
    clapPlugin.start_processing = [](const clap_plugin_t* p) {
        of(p).reset();
        return true;
    };
    clapPlugin.stop_processing = [](const clap_plugin_t*) {};
    clapPlugin.reset = [](const clap_plugin_t* p) { of(p).reset(); };
    clapPlugin.process = [](const clap_plugin_t* p, const clap_process_t* block) {
        return of(p).process(*block);
    };
    clapPlugin.get_extension = [](const clap_plugin_t*, const char* id) { return extension(id); };
    clapPlugin.on_main_thread = [](const clap_plugin_t* p) { of(p).plugin->asyncQueue().deliver(); };
}

std::unique_ptr<GenericPlugin> ClapPluginAdapter::createPlugin()
{
    return std::make_unique<SordelinPlugin>();
}

std::unique_ptr<GenericPluginProcessor> ClapPluginAdapter::createProcessor()
{
    return std::make_unique<SordelinProcessor>();
}

bool ClapPluginAdapter::init()
{
    createHalves();
    buildAudioPorts();
    const auto fetch = [this](const char* id, auto& table) {
        table = static_cast<std::remove_reference_t<decltype(table)>>(host.get_extension(&host, id));
    };
    fetch(CLAP_EXT_PARAMS, hostExtensions.params);
    fetch(CLAP_EXT_LATENCY, hostExtensions.latency);
    fetch(CLAP_EXT_TRACK_INFO, hostExtensions.trackInfo);
    fetch(CLAP_EXT_STATE, hostExtensions.state);
    fetch(CLAP_EXT_PRESET_LOAD, hostExtensions.presetLoad);
    delivery = std::make_unique<MainThreadDelivery>(host, plugin->asyncQueue());
    return true;
}

bool ClapPluginAdapter::activate(double sampleRate, std::uint32_t maxFrames)
{
    const auto rate = static_cast<float>(sampleRate);
    // NaN is none of them.
    if (!(rate >= lowestSampleRate && rate <= highestSampleRate))
        return false;
    if (!isNear(rate, plugin->sampleRate()))
        plugin->setSampleRate(rate);
    processor->engine().setSampleRate(rate);
    processor->reserveBlock(maxFrames);
    outEvents.reserve(maxFrames);
    if (latencyChangePending && hostExtensions.latency)
        hostExtensions.latency->changed(&host);
    latencyChangePending = false;
    active = true;
    return true;
}

const void* ClapPluginAdapter::extension(const char* id)
{
    struct Entry {
        const char* id;
        const void* table;
    };
    const std::array entries{
        Entry{CLAP_EXT_NOTE_PORTS, &notePortsTable},
        Entry{CLAP_EXT_AUDIO_PORTS, &audioPortsTable},
        Entry{CLAP_EXT_AUDIO_PORTS_CONFIG, &audioPortsConfigTable},
        Entry{CLAP_EXT_AUDIO_PORTS_CONFIG_INFO, &audioPortsConfigInfoTable},
        Entry{CLAP_EXT_AUDIO_PORTS_CONFIG_INFO_COMPAT, &audioPortsConfigInfoTable},
        Entry{CLAP_EXT_PARAMS, &paramsTable},
        Entry{CLAP_EXT_LATENCY, &latencyTable},
        Entry{CLAP_EXT_TAIL, &tailTable},
        Entry{CLAP_EXT_STATE, &stateTable},
        Entry{CLAP_EXT_PRESET_LOAD, &presetLoadTable},
        Entry{CLAP_EXT_PRESET_LOAD_COMPAT, &presetLoadTable},
        Entry{CLAP_EXT_TRACK_INFO, &trackInfoTable},
        Entry{CLAP_EXT_TRACK_INFO_COMPAT, &trackInfoTable},
        Entry{CLAP_EXT_PROJECT_LOCATION, &projectLocationTable},
        Entry{CLAP_EXT_TIMER_SUPPORT, &timerTable},
        Entry{CLAP_EXT_POSIX_FD_SUPPORT, &descriptorTable},
    };
    for (const Entry& entry : entries) {
        if (id && std::strcmp(id, entry.id) == 0)
            return entry.table;
    }
    return nullptr;
}

void ClapPluginAdapter::latencyChanged()
{
    latencyChangePending = true;
    if (active)
        host.request_restart(&host);
}

// Processing.

void ClapPluginAdapter::reset() noexcept
{
    const GenericPluginProcessor::AudioCall call(*processor);
    processor->reset();
}

clap_process_status ClapPluginAdapter::process(const clap_process_t& block) noexcept
{
    const FloatingPointScope floatingPoint;
    const GenericPluginProcessor::AudioCall call(*processor);
    Channels channels;
    gatherChannels(block, channels);
    gatherOutputs(block, channels);
    passTransport(block.transport);
    const unsigned status = renderBlock(block, channels);
    if (block.audio_outputs_count > 0) {
        // Of channels beyond the layout nothing is known.
        clap_audio_buffer_t& output = block.audio_outputs[0];
        const bool known = static_cast<int>(output.channel_count) == plugin->channelCount();
        output.constant_mask = known && (status & BypassProcessor::OutputSilent) ? 0xFFFFFFFFu : 0u;
    }
    drainOutEvents(block.out_events);
    return CLAP_PROCESS_CONTINUE;
}

void ClapPluginAdapter::gatherChannels(const clap_process_t& block, Channels& channels) noexcept
{
    const auto perPort = static_cast<std::uint32_t>(plugin->channelCount());
    const auto ports =
        std::min<std::uint32_t>(block.audio_inputs_count, static_cast<std::uint32_t>(inputPortCount));
    int connected = 0;
    for (std::uint32_t port = 0; port < ports; ++port) {
        const clap_audio_buffer_t& buffer = block.audio_inputs[port];
        const std::uint32_t count = buffer.data32 ? std::min(buffer.channel_count, perPort) : 0;
        for (std::uint32_t c = 0; c < count; ++c) {
            const float* samples = buffer.data32[c];
            if (!samples)
                continue;
            channels.inputs[port * perPort + c] = samples;
            ++connected;
            const bool constant = (buffer.constant_mask >> c & 1) != 0;
            // No sample tells of a block of no samples.
            if (!constant || (block.frames_count > 0 && samples[0] != 0.0f))
                channels.inputSilent = false;
        }
    }
    processor->inputsConnected = connected >= inputChannelCount();
}

void ClapPluginAdapter::gatherOutputs(const clap_process_t& block, Channels& channels) const noexcept
{
    if (block.audio_outputs_count == 0 || !block.audio_outputs[0].data32)
        return;
    const clap_audio_buffer_t& buffer = block.audio_outputs[0];
    const int count = std::min(static_cast<int>(buffer.channel_count), maxOutputChannels);
    while (channels.outputCount < count && buffer.data32[channels.outputCount]) {
        channels.outputs[channels.outputCount] = buffer.data32[channels.outputCount];
        ++channels.outputCount;
    }
}

void ClapPluginAdapter::passTransport(const clap_event_transport_t* transport) noexcept
{
    if (!transport) {
        processor->updateTransport(120.0f, 0.0, false);
        return;
    }
    const auto has = [transport](std::uint32_t flag) { return (transport->flags & flag) != 0; };
    const float tempo = has(CLAP_TRANSPORT_HAS_TEMPO) ? static_cast<float>(transport->tempo) : 120.0f;
    const double beats = static_cast<double>(transport->song_pos_beats) / CLAP_BEATTIME_FACTOR;
    processor->updateTransport(tempo, has(CLAP_TRANSPORT_HAS_BEATS_TIMELINE) ? beats : 0.0,
                               has(CLAP_TRANSPORT_IS_PLAYING));
}

unsigned ClapPluginAdapter::renderBlock(const clap_process_t& block, Channels& channels) noexcept
{
    ClapEventScan scan(block.in_events, *this);
    unsigned silence = BypassProcessor::OutputSilent;
    std::uint32_t position = 0;
    do {
        const std::uint32_t end = scan.advance(position, block.frames_count);
        const std::uint32_t frames = end - position;
        unsigned status = channels.inputSilent ? BypassProcessor::InputSilent : 0u;
        processor->process(channels.inputs, inputChannelCount(), channels.outputs, channels.outputCount,
                           static_cast<int>(frames), status);
        silence &= status;
        for (const float*& input : channels.inputs)
            input = input ? input + frames : nullptr;
        for (float*& output : channels.outputs)
            output = output ? output + frames : nullptr;
        position = end;
    } while (position < block.frames_count);
    return silence;
}

void ClapPluginAdapter::applyParameter(clap_id id, double value) noexcept
{
    if (parameterOf(id))
        automate(static_cast<int>(id), static_cast<float>(value));
}

void ClapPluginAdapter::queueMidi(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                                  std::int32_t offset) noexcept
{
    if (processor->acceptsMidi())
        processor->queueMidi({status, data1, data2, offset});
}
