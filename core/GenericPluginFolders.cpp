// What GenericPlugin does with the trees of preset files.

#include "core/GenericPlugin.h"
#include "core/SharedPluginData.h"
#include "foundation/Paths.h"
#include "foundation/Resources.h"
#include "foundation/UserFolders.h"

namespace {

constexpr const char* factoryResource = "WindowsSetupDocs";
constexpr const char* cacheName = "PresetCache.dat";

}  // namespace

void GenericPlugin::makePresetFolders()
{
    const std::string dataFolder = productDataFolder(versionedName);
    if (hasFlag(HasPresetCache) && createFolders(dataFolder))
        shared->presetCache = std::make_unique<PresetCache>(dataFolder + cacheName);
    shared->presetManager = std::make_unique<PresetManager>(presetExtension());
    shared->presetManager->setCache(shared->presetCache.get());
    for (int group = 0; group < componentPresets.groupCount(); ++group) {
        shared->componentManagers.push_back(
            std::make_unique<PresetManager>(componentPresets.extension(group)));
        shared->componentManagers.back()->rescan(componentPresetFolder(group));
    }
}

PresetManager& GenericPlugin::presetManager(int group)
{
    return group == wholePresets ? *shared->presetManager
                                 : *shared->componentManagers[static_cast<std::size_t>(group)];
}

PresetCache* GenericPlugin::presetCache() { return shared->presetCache.get(); }

void GenericPlugin::choosePresetFolder(const std::string& path)
{
    presetManager().chooseRoot(path, presetFolder(versionedName));
}

/// A folder that doesn't answer isn't empty: nobody writes there, and nobody waits for it.
void GenericPlugin::fillPresetFolders()
{
    const PresetManager& manager = presetManager();
    if (manager.isEmpty() && manager.hasAnswered())
        unpackFactoryContent(FactoryArchive::Existing::Keep);
}

bool GenericPlugin::unpackFactoryContent(FactoryArchive::Existing existing)
{
    const FactoryArchive archive(findResource(factoryResource));
    archive.extract("ApplicationData", productDataFolder(versionedName), existing);
    PresetManager& manager = presetManager();
    const bool good = archive.extract("FactoryPresets", manager.path(), existing);
    manager.rescan(manager.path());
    for (const auto& component : shared->componentManagers)
        component->rescan(component->path());
    return good;
}

// Other instances may be made on other threads meanwhile: the trees are read and changed with the lock held.

void GenericPlugin::selectPreset(int number)
{
    std::optional<PresetInfo> preset;
    {
        const std::lock_guard lock(SharedPluginData::lock());
        std::vector<PresetInfo*> presets;
        presetManager().listPresets(presets);
        if (number >= 0 && static_cast<std::size_t>(number) < presets.size())
            preset = *presets[static_cast<std::size_t>(number)];
    }
    if (preset)
        loadPreset(*preset);
}

std::optional<PresetInfo> GenericPlugin::findPreset(std::string_view presetName)
{
    const std::lock_guard lock(SharedPluginData::lock());
    const PresetInfo* preset = presetManager().findByName(presetName, PresetManager::Scope::Everything);
    return preset ? std::optional(*preset) : std::nullopt;
}

std::string GenericPlugin::findPresetPath(std::string_view presetName)
{
    const std::optional<PresetInfo> preset = findPreset(presetName);
    return preset ? preset->path : std::string();
}

void GenericPlugin::presetWasSaved(const PresetInfo&)
{
    const std::lock_guard lock(SharedPluginData::lock());
    PresetManager& manager = presetManager();
    manager.rescan(manager.path());
}

void GenericPlugin::componentPresetWasSaved(int group)
{
    const std::lock_guard lock(SharedPluginData::lock());
    PresetManager& manager = presetManager(group);
    manager.rescan(manager.path());
}

std::optional<PresetInfo> GenericPlugin::findComponentPreset(int group, std::string_view presetName)
{
    const std::lock_guard lock(SharedPluginData::lock());
    const PresetInfo* preset = presetManager(group).findByName(presetName, PresetManager::Scope::Everything);
    return preset ? std::optional(*preset) : std::nullopt;
}
