#pragma once

#include "abi/Clap.h"

#include <cstdint>
#include <filesystem>
#include <memory>

/// One loaded `.clap` file: dlopen and `init` at construction, `deinit` and dlclose at destruction.
///
/// Several objects may load the same file; each adds one `init` that its destruction matches.
/// Instances must be gone before their module. Thread: main.
class ClapModule {
public:
    /// Throws ClapHostError if the file can't be loaded, exports no usable `clap_entry`, refuses `init`, or
    /// has no plug-in factory.
    explicit ClapModule(const std::filesystem::path& file);

    /// Absolute.
    const std::filesystem::path& file() const noexcept { return path; }
    const clap_plugin_entry_t& entry() const noexcept { return *moduleEntry; }
    const clap_plugin_factory_t& pluginFactory() const noexcept { return *factory; }
    /// Null if the module has no such factory.
    const void* findFactory(const char* id) const noexcept { return moduleEntry->get_factory(id); }
    /// Throws ClapHostError if there is no plug-in of this index.
    const clap_plugin_descriptor_t& descriptor(std::uint32_t index = 0) const;

private:
    struct CloseLibrary {
        void operator()(void* library) const noexcept;
    };
    struct Deinit {
        void operator()(const clap_plugin_entry_t* entry) const noexcept { entry->deinit(); }
    };

    std::filesystem::path path;
    std::unique_ptr<void, CloseLibrary> library;  // declared before the entry: closed after its deinit
    std::unique_ptr<const clap_plugin_entry_t, Deinit> moduleEntry;
    const clap_plugin_factory_t* factory = nullptr;
};
