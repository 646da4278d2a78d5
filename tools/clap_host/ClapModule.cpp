#include "clap_host/ClapModule.h"

#include "clap_host/ClapHostError.h"
#include "clap_host/QuotedText.h"

#include <dlfcn.h>

#include <string>

namespace {

void* openLibrary(const std::filesystem::path& path)
{
    if (!std::filesystem::exists(path))
        throw ClapHostError("no such plug-in file: " + inQuotes(path.string()));
    void* library = dlopen(path.c_str(), RTLD_LOCAL | RTLD_NOW);
    if (!library) {
        const char* reason = dlerror();
        throw ClapHostError("can't load " + inQuotes(path.string()) + ": " +
                            (reason ? reason : "unknown reason"));
    }
    return library;
}

const clap_plugin_entry_t* initEntry(void* library, const std::filesystem::path& path)
{
    const auto* entry = static_cast<const clap_plugin_entry_t*>(dlsym(library, "clap_entry"));
    if (!entry)
        throw ClapHostError(inQuotes(path.string()) + " is not a CLAP plug-in: it exports no clap_entry");
    if (entry->clap_version.major < 1)
        throw ClapHostError(inQuotes(path.string()) + " follows a CLAP version before 1.0");
    if (!entry->init(path.c_str()))
        throw ClapHostError(inQuotes(path.string()) + " refused to initialise");
    return entry;
}

}  // namespace

void ClapModule::CloseLibrary::operator()(void* handle) const noexcept { dlclose(handle); }

ClapModule::ClapModule(const std::filesystem::path& file)
    : path(std::filesystem::absolute(file)),
      library(openLibrary(path)),
      moduleEntry(initEntry(library.get(), path)),
      factory(static_cast<const clap_plugin_factory_t*>(moduleEntry->get_factory(CLAP_PLUGIN_FACTORY_ID)))
{
    if (!factory)
        throw ClapHostError(inQuotes(path.string()) + " has no plug-in factory");
}

const clap_plugin_descriptor_t& ClapModule::descriptor(std::uint32_t index) const
{
    const clap_plugin_descriptor_t* found = factory->get_plugin_descriptor(factory, index);
    if (!found)
        throw ClapHostError(inQuotes(path.string()) + " has no plug-in number " + std::to_string(index));
    return *found;
}
