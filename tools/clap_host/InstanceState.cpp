#include "clap_host/InstanceState.h"

#include "clap_host/ClapHostError.h"

#include <algorithm>
#include <string_view>

namespace {

template <class Table>
const Table& require(const ClapInstance& instance, const char* id)
{
    const Table* table = instance.extension<Table>(id);
    if (!table)
        throw ClapHostError(std::string("the plug-in lacks ").append(id));
    return *table;
}

struct Sink {
    std::string bytes;
    std::size_t piece;
};

struct Source {
    std::string_view left;
    std::size_t piece;
};

}  // namespace

std::optional<std::string> saveState(const ClapInstance& instance, std::size_t piece)
{
    Sink sink{{}, piece};
    clap_ostream_t stream{};
    stream.ctx = &sink;
    stream.write = [](const clap_ostream_t* from, const void* data, std::uint64_t size) {
        auto& to = *static_cast<Sink*>(from->ctx);
        const std::size_t taken = std::min<std::uint64_t>(size, to.piece);
        to.bytes.append(static_cast<const char*>(data), taken);
        return static_cast<std::int64_t>(taken);
    };
    if (!require<clap_plugin_state_t>(instance, CLAP_EXT_STATE).save(&instance.plugin(), &stream))
        return std::nullopt;
    return std::move(sink.bytes);
}

bool loadState(const ClapInstance& instance, const std::string& state, std::size_t piece)
{
    Source source{state, piece};
    clap_istream_t stream{};
    stream.ctx = &source;
    stream.read = [](const clap_istream_t* to, void* data, std::uint64_t size) {
        auto& from = *static_cast<Source*>(to->ctx);
        const std::size_t given = std::min({static_cast<std::size_t>(size), from.piece, from.left.size()});
        std::copy_n(from.left.data(), given, static_cast<char*>(data));
        from.left.remove_prefix(given);
        return static_cast<std::int64_t>(given);
    };
    return require<clap_plugin_state_t>(instance, CLAP_EXT_STATE).load(&instance.plugin(), &stream);
}

bool loadPresetFile(const ClapInstance& instance, const std::string& path)
{
    return require<clap_plugin_preset_load_t>(instance, CLAP_EXT_PRESET_LOAD)
        .from_location(&instance.plugin(), CLAP_PRESET_DISCOVERY_LOCATION_FILE, path.c_str(), nullptr);
}
