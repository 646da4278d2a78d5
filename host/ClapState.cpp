// What passes between an instance and the host's project: the state, and presets.
#include "host/ClapPluginAdapter.h"

#include <sstream>

namespace {

constexpr std::uint64_t pieceSize = 2048;  // bytes

bool writeAll(const clap_ostream_t& stream, std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::int64_t written = stream.write(&stream, bytes.data(), bytes.size());
        if (written < 1 || static_cast<std::uint64_t>(written) > bytes.size())
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool readAll(const clap_istream_t& stream, std::string& bytes)
{
    char piece[pieceSize];
    for (;;) {
        const std::int64_t read = stream.read(&stream, piece, pieceSize);
        if (read < 0 || static_cast<std::uint64_t>(read) > pieceSize)
            return false;
        if (read == 0)
            return true;
        bytes.append(piece, static_cast<std::size_t>(read));
    }
}

}  // namespace

bool ClapPluginAdapter::saveState(const clap_ostream_t* stream)
{
    std::ostringstream blob;
    return stream && plugin->saveState(blob) && writeAll(*stream, blob.view());
}

bool ClapPluginAdapter::loadState(const clap_istream_t* stream)
{
    std::string bytes;
    if (!stream || !readAll(*stream, bytes))
        return false;
    std::istringstream blob(std::move(bytes));
    const bool loaded = plugin->loadState(blob);
    // Also after a failure: what has been read stays, and both halves and the host agree on it.
    {
        const ScopedLock scopedLock(*lock);
        synchroniseParameters(GenericPlugin::WithoutReset);
    }
    if (!active)
        processor->applyQueuedChanges();
    if (hostExtensions.params)
        hostExtensions.params->rescan(&host, CLAP_PARAM_RESCAN_VALUES);
    return loaded;
}

bool ClapPluginAdapter::loadPreset(std::uint32_t kind, const char* location)
{
    if (kind != CLAP_PRESET_DISCOVERY_LOCATION_FILE || !location)
        return false;
    const ErrorResult result = plugin->loadPreset(PresetInfo(location));
    if (!result.succeeded() && hostExtensions.presetLoad)
        hostExtensions.presetLoad->on_error(&host, kind, location, nullptr, 0, result.message().c_str());
    return result.succeeded();  // which `stateChanged` has told already
}

void ClapPluginAdapter::stateChanged(GenericPlugin::StateChange change)
{
    if (change == GenericPlugin::StateChange::Preset) {
        if (hostExtensions.presetLoad)
            hostExtensions.presetLoad->loaded(&host, CLAP_PRESET_DISCOVERY_LOCATION_FILE,
                                              plugin->presetState.path.value().c_str(), nullptr);
        if (hostExtensions.params)
            hostExtensions.params->request_flush(&host);
    }
    if (hostExtensions.state)
        hostExtensions.state->mark_dirty(&host);
}

const clap_plugin_state_t ClapPluginAdapter::stateTable{
    .save = [](const clap_plugin_t* p,
               const clap_ostream_t* stream) { return onMainThread(p).saveState(stream); },
    .load = [](const clap_plugin_t* p,
               const clap_istream_t* stream) { return onMainThread(p).loadState(stream); },
};

const clap_plugin_preset_load_t ClapPluginAdapter::presetLoadTable{
    .from_location = [](const clap_plugin_t* p, std::uint32_t kind, const char* location,
                        const char*) { return onMainThread(p).loadPreset(kind, location); },
};
