#include "host/ClapPresetDiscovery.h"

#include "core/PresetFolderSetting.h"
#include "foundation/Paths.h"
#include "foundation/UserFolders.h"
#include "presets/FavoritesFile.h"
#include "presets/PresetMetadata.h"
#include "product/SordelinInfo.h"

namespace {

constexpr std::uint32_t ofFactoryOrUser =
    CLAP_PRESET_DISCOVERY_IS_FACTORY_CONTENT | CLAP_PRESET_DISCOVERY_IS_USER_CONTENT;

}  // namespace

const clap_preset_discovery_provider_t*
ClapPresetDiscovery::create(const clap_preset_discovery_indexer_t& indexer,
                            const clap_preset_discovery_provider_descriptor_t& descriptor,
                            const char* pluginId)
{
    return &(new ClapPresetDiscovery(indexer, descriptor, pluginId))->provider;
}

ClapPresetDiscovery::ClapPresetDiscovery(const clap_preset_discovery_indexer_t& hostIndexer,
                                         const clap_preset_discovery_provider_descriptor_t& descriptor,
                                         const char* id)
    : pluginInfo(sordelinInfo()), indexer(&hostIndexer), pluginId(id)
{
    using Record = const clap_preset_discovery_provider_t*;
    provider.desc = &descriptor;
    provider.provider_data = this;
    provider.init = [](Record record) { return of(record)->init(); };
    provider.destroy = [](Record record) { delete of(record); };
    provider.get_metadata = [](Record record, std::uint32_t kind, const char* location,
                               const clap_preset_discovery_metadata_receiver_t* receiver) {
        return receiver && of(record)->getMetadata(kind, location, *receiver);
    };
    provider.get_extension = [](Record, const char*) -> const void* { return nullptr; };
}

ClapPresetDiscovery* ClapPresetDiscovery::of(const clap_preset_discovery_provider_t* record)
{
    return static_cast<ClapPresetDiscovery*>(record->provider_data);
}

bool ClapPresetDiscovery::init()
{
    presetFolder = presetFolderSetting(pluginInfo.name, sordelinVersion().major,
                                       ::presetFolder(pluginInfo.versionedName));
    if (!declare())
        return false;
    favorites.clear();
    for (std::string& favorite : FavoritesFile(presetFolder).read())
        favorites.insert(std::move(favorite));
    return true;
}

bool ClapPresetDiscovery::declare() const
{
    const std::string name = std::string(pluginInfo.name).append(" Preset Folder");
    clap_preset_discovery_location_t location{};
    location.flags = ofFactoryOrUser;
    location.name = name.c_str();
    location.kind = CLAP_PRESET_DISCOVERY_LOCATION_FILE;
    location.location = presetFolder.c_str();
    if (!indexer->declare_location(indexer, &location))
        return false;
    clap_preset_discovery_filetype_t fileType{};
    fileType.name = "Morvelane Preset";
    fileType.description = "Preset for a Morvelane plugin";
    fileType.file_extension = "mvp";
    return indexer->declare_filetype(indexer, &fileType);
}

bool ClapPresetDiscovery::getMetadata(std::uint32_t kind, const char* location,
                                      const clap_preset_discovery_metadata_receiver_t& receiver) const
{
    if (kind != CLAP_PRESET_DISCOVERY_LOCATION_FILE || !location || !fileExists(location))
        return false;
    PresetInfo preset(location);
    readPresetMetadata(preset.path, preset);  // what can't be read has a name at least
    if (!receiver.begin_preset(&receiver, preset.name.c_str(), location))
        return false;
    if (!preset.author.empty())
        receiver.add_creator(&receiver, preset.author.c_str());
    if (!preset.description.empty())
        receiver.set_description(&receiver, preset.description.c_str());
    if (favorites.contains(preset.path))
        receiver.set_flags(&receiver, ofFactoryOrUser | CLAP_PRESET_DISCOVERY_IS_FAVORITE);
    const clap_universal_plugin_id_t plugin{"clap", pluginId.c_str()};
    receiver.add_plugin_id(&receiver, &plugin);
    for (const std::string& tag : preset.tags)
        receiver.add_feature(&receiver, tag.c_str());
    return true;
}
