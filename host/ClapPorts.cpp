// The ports of an instance, and what a host plans by: latency and tail.
#include "host/ClapPluginAdapter.h"
#include "host/ClapText.h"

#include <cstdint>
#include <limits>

namespace {

const char* portType(int layout)
{
    if (layout == ChannelLayout::mono)
        return CLAP_PORT_MONO;
    return layout == ChannelLayout::stereo ? CLAP_PORT_STEREO : CLAP_PORT_SURROUND;
}

/// The layouts that a plug-in offers: a run of the table of layouts.
struct LayoutRange {
    int first;
    int count;

    explicit LayoutRange(const GenericPluginInfo& info)
        : first(info.hasFlag(GenericPluginInfo::OffersMono) ? ChannelLayout::mono : ChannelLayout::stereo),
          count((info.hasFlag(GenericPluginInfo::OffersSurround) ? ChannelLayout::count
                                                                 : ChannelLayout::stereo + 1) -
                first)
    {}
    bool holds(clap_id id) const
    {
        return id >= static_cast<clap_id>(first) && id < static_cast<clap_id>(first + count);
    }
};

}  // namespace

void ClapPluginAdapter::buildAudioPorts()
{
    tailSamples = processor->tailLength();
    inputPortCount = plugin->isEffect() ? (plugin->hasSideChain() ? 2 : 1) : 0;
}

bool ClapPluginAdapter::portInfo(int layout, std::uint32_t index, bool isInput,
                                 clap_audio_port_info_t* info) const
{
    if (!info || index >= static_cast<std::uint32_t>(isInput ? inputPortCount : 1))
        return false;
    const bool isMain = index == 0;
    *info = {};
    info->id = index;
    copyText(info->name, sizeof info->name, !isInput ? "Main Out" : isMain ? "Main In" : "Sidechain In");
    info->flags = isMain ? CLAP_AUDIO_PORT_IS_MAIN : 0;
    info->channel_count = static_cast<uint32_t>(ChannelLayout::at(layout).channels);
    info->port_type = portType(layout);
    info->in_place_pair = CLAP_INVALID_ID;
    return true;
}

const clap_plugin_audio_ports_t ClapPluginAdapter::audioPortsTable{
    .count = [](const clap_plugin_t* p,
                bool isInput) { return isInput ? static_cast<uint32_t>(of(p).inputPortCount) : 1; },
    .get = [](const clap_plugin_t* p, uint32_t index, bool isInput, clap_audio_port_info_t* info) -> bool {
        const ClapPluginAdapter& adapter = of(p);
        return adapter.portInfo(adapter.plugin->layoutIndex(), index, isInput, info);
    },
};

const clap_plugin_audio_ports_config_t ClapPluginAdapter::audioPortsConfigTable{
    .count = [](const clap_plugin_t* p) { return static_cast<uint32_t>(LayoutRange(*of(p).plugin).count); },
    .get = [](const clap_plugin_t* p, uint32_t index, clap_audio_ports_config_t* config) -> bool {
        const GenericPlugin& plugin = *of(p).plugin;
        const LayoutRange range(plugin);
        if (!config || index >= static_cast<uint32_t>(range.count))
            return false;
        const int layout = range.first + static_cast<int>(index);
        const auto channels = static_cast<uint32_t>(ChannelLayout::at(layout).channels);
        *config = {};
        config->id = static_cast<clap_id>(layout);
        copyText(config->name, sizeof config->name, ChannelLayout::at(layout).name);
        config->input_port_count = (plugin.isEffect() ? 1u : 0u) + (plugin.hasSideChain() ? 1u : 0u);
        config->output_port_count = 1;
        config->has_main_input = true;
        config->main_input_channel_count = channels;
        config->main_input_port_type = portType(layout);
        config->has_main_output = true;
        config->main_output_channel_count = channels;
        config->main_output_port_type = portType(layout);
        return true;
    },
    .select = [](const clap_plugin_t* p, clap_id id) -> bool {
        ClapPluginAdapter& adapter = of(p);
        if (!LayoutRange(*adapter.plugin).holds(id))
            return false;
        adapter.selectChannelLayout(static_cast<int>(id));
        adapter.buildAudioPorts();
        return true;
    },
};

const clap_plugin_audio_ports_config_info_t ClapPluginAdapter::audioPortsConfigInfoTable{
    .current_config =
        [](const clap_plugin_t* p) { return static_cast<clap_id>(of(p).plugin->layoutIndex()); },
    .get = [](const clap_plugin_t* p, clap_id id, uint32_t index, bool isInput,
              clap_audio_port_info_t* info) -> bool {
        const ClapPluginAdapter& adapter = of(p);
        return LayoutRange(*adapter.plugin).holds(id) &&
               adapter.portInfo(static_cast<int>(id), index, isInput, info);
    },
};

const clap_plugin_note_ports_t ClapPluginAdapter::notePortsTable{
    .count = [](const clap_plugin_t*, bool isInput) -> uint32_t { return isInput ? 1 : 0; },
    .get = [](const clap_plugin_t*, uint32_t index, bool isInput, clap_note_port_info_t* info) -> bool {
        if (!isInput || index != 0 || !info)
            return false;
        *info = {};
        info->id = 0;
        info->supported_dialects = CLAP_NOTE_DIALECT_CLAP | CLAP_NOTE_DIALECT_MIDI;
        info->preferred_dialect = CLAP_NOTE_DIALECT_MIDI;
        copyText(info->name, sizeof info->name, "Note Port");
        return true;
    },
};

const clap_plugin_latency_t ClapPluginAdapter::latencyTable{
    .get = [](const clap_plugin_t* p) { return static_cast<uint32_t>(of(p).processor->latency()); },
};

const clap_plugin_tail_t ClapPluginAdapter::tailTable{
    .get =
        [](const clap_plugin_t* p) {
            const int tail = of(p).tailSamples;
            return static_cast<uint32_t>(tail < 0 ? std::numeric_limits<int32_t>::max() : tail);
        },
};
