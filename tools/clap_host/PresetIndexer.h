#pragma once

#include "clap_host/ClapModule.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Asks a module for its presets as a host does that indexes them: without an instance.
///
/// What a provider does against the rules of the format is noted in `faults`. Thread: one at a time.
class PresetIndexer {
public:
    struct Location {
        std::string name;
        std::string path;
        std::uint32_t kind = 0;
        std::uint32_t flags = 0;
    };
    struct FileType {
        std::string name;
        std::string description;
        std::string extension;
    };
    /// What the provider told of one preset.
    struct Preset {
        std::string name;
        std::string loadKey;
        std::vector<std::string> creators;
        std::string description;
        std::optional<std::uint32_t> flags;
        std::vector<std::string> plugins;  // as "clap:the.id"
        std::vector<std::string> features;
        int otherCalls = 0;  // of what isn't listed here
    };

    /// Creates the provider; throws ClapHostError if there is no factory or it refuses. `module` outlives
    /// this. @param factoryId  by which the factory is asked for
    explicit PresetIndexer(const ClapModule& module,
                           const char* factoryId = CLAP_PRESET_DISCOVERY_FACTORY_ID);
    PresetIndexer(const PresetIndexer&) = delete;
    PresetIndexer& operator=(const PresetIndexer&) = delete;
    ~PresetIndexer();

    /// Has the provider make its declarations. Its answer.
    bool init();
    /// Asks for the presets of one file. None if the provider says that there are none.
    std::optional<std::vector<Preset>> read(const std::string& path,
                                            std::uint32_t kind = CLAP_PRESET_DISCOVERY_LOCATION_FILE);

    const clap_preset_discovery_provider_t& provider() const noexcept { return *made; }

    bool acceptsLocations = true;
    bool acceptsFileTypes = true;
    bool acceptsPresets = true;
    std::vector<Location> locations;
    std::vector<FileType> fileTypes;
    std::vector<std::string> faults;

private:
    static PresetIndexer& of(const clap_preset_discovery_indexer_t* indexer);
    static PresetIndexer& of(const clap_preset_discovery_metadata_receiver_t* receiver);
    void fillIndexer();
    void fillReceiver();
    void expect(bool isRight, const char* fault);
    /// The preset begun last.
    Preset& current();

    clap_preset_discovery_indexer_t indexer{};
    clap_preset_discovery_metadata_receiver_t receiver{};
    const clap_preset_discovery_provider_t* made = nullptr;
    bool initialising = false;
    bool reading = false;
    std::vector<Preset> presets;
};
