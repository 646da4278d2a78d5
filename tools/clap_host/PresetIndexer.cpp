#include "clap_host/PresetIndexer.h"

#include "clap_host/ClapHostError.h"

namespace {

std::string textOf(const char* text) { return text ? text : ""; }

}  // namespace

PresetIndexer::PresetIndexer(const ClapModule& module, const char* factoryId)
{
    fillIndexer();
    fillReceiver();
    const auto* factory = static_cast<const clap_preset_discovery_factory_t*>(module.findFactory(factoryId));
    if (!factory)
        throw ClapHostError("the module has no preset-discovery factory");
    const auto* descriptor = factory->get_descriptor(factory, 0);
    if (!descriptor)
        throw ClapHostError("the preset-discovery factory has no provider");
    made = factory->create(factory, &indexer, descriptor->id);
    if (!made)
        throw ClapHostError("the preset-discovery provider can't be made");
}

PresetIndexer::~PresetIndexer() { made->destroy(made); }

bool PresetIndexer::init()
{
    initialising = true;
    const bool answer = made->init(made);
    initialising = false;
    return answer;
}

std::optional<std::vector<PresetIndexer::Preset>> PresetIndexer::read(const std::string& path,
                                                                      std::uint32_t kind)
{
    presets.clear();
    reading = true;
    const bool answer = made->get_metadata(made, kind, path.c_str(), &receiver);
    reading = false;
    for (const Preset& preset : presets)
        expect(!preset.plugins.empty() || !answer, "a preset of no plug-in");
    if (!answer)
        return std::nullopt;
    return presets;
}

PresetIndexer& PresetIndexer::of(const clap_preset_discovery_indexer_t* indexer)
{
    return *static_cast<PresetIndexer*>(indexer->indexer_data);
}

PresetIndexer& PresetIndexer::of(const clap_preset_discovery_metadata_receiver_t* receiver)
{
    return *static_cast<PresetIndexer*>(receiver->receiver_data);
}

void PresetIndexer::expect(bool isRight, const char* fault)
{
    if (!isRight)
        faults.emplace_back(fault);
}

PresetIndexer::Preset& PresetIndexer::current()
{
    expect(reading, "metadata outside get_metadata");
    expect(!presets.empty(), "metadata before a preset has begun");
    if (presets.empty())
        presets.emplace_back();
    return presets.back();
}

void PresetIndexer::fillIndexer()
{
    using Indexer = const clap_preset_discovery_indexer_t*;
    indexer.clap_version = {1, 2, 5};
    indexer.name = "Test indexer";
    indexer.indexer_data = this;
    indexer.declare_filetype = [](Indexer self, const clap_preset_discovery_filetype_t* type) {
        of(self).expect(of(self).initialising, "a file type declared outside init");
        of(self).expect(type->name != nullptr, "a file type without a name");
        of(self).fileTypes.push_back(
            {textOf(type->name), textOf(type->description), textOf(type->file_extension)});
        return of(self).acceptsFileTypes;
    };
    indexer.declare_location = [](Indexer self, const clap_preset_discovery_location_t* location) {
        of(self).expect(of(self).initialising, "a location declared outside init");
        of(self).expect(location->name && location->location && *location->location == '/',
                        "a location without a name or an absolute path");
        of(self).locations.push_back(
            {textOf(location->name), textOf(location->location), location->kind, location->flags});
        return of(self).acceptsLocations;
    };
    indexer.declare_soundpack = [](Indexer self, const clap_preset_discovery_soundpack_t*) {
        of(self).expect(of(self).initialising, "a sound pack declared outside init");
        return true;
    };
    indexer.get_extension = [](Indexer, const char*) -> const void* { return nullptr; };
}

void PresetIndexer::fillReceiver()
{
    using Receiver = const clap_preset_discovery_metadata_receiver_t*;
    receiver.receiver_data = this;
    receiver.on_error = [](Receiver self, std::int32_t, const char*) { ++of(self).current().otherCalls; };
    receiver.begin_preset = [](Receiver self, const char* name, const char* loadKey) {
        of(self).expect(of(self).reading, "a preset outside get_metadata");
        Preset preset;
        preset.name = textOf(name);
        preset.loadKey = textOf(loadKey);
        of(self).presets.push_back(preset);
        return of(self).acceptsPresets;
    };
    receiver.add_plugin_id = [](Receiver self, const clap_universal_plugin_id_t* plugin) {
        of(self).current().plugins.push_back(textOf(plugin->abi).append(":").append(textOf(plugin->id)));
    };
    receiver.set_soundpack_id = [](Receiver self, const char*) { ++of(self).current().otherCalls; };
    receiver.set_flags = [](Receiver self, std::uint32_t flags) { of(self).current().flags = flags; };
    receiver.add_creator = [](Receiver self, const char* creator) {
        of(self).current().creators.push_back(textOf(creator));
    };
    receiver.set_description = [](Receiver self, const char* text) {
        of(self).current().description = textOf(text);
    };
    receiver.set_timestamps = [](Receiver self, clap_timestamp, clap_timestamp) {
        ++of(self).current().otherCalls;
    };
    receiver.add_feature = [](Receiver self, const char* feature) {
        of(self).current().features.push_back(textOf(feature));
    };
    receiver.add_extra_info = [](Receiver self, const char*, const char*) {
        ++of(self).current().otherCalls;
    };
}
