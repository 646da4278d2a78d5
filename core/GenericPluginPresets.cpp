// What GenericPlugin does with presets.

#include "core/GenericPlugin.h"
#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"
#include "foundation/Paths.h"
#include "foundation/UserFolders.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/CustomPresetLoader.h"
#include "presets/PresetFile.h"

#include <sstream>
#include <utility>
#include <vector>

namespace {

constexpr const char* interfaceDefaultsName = "InterfaceDefaults.mvd";
constexpr const char* interfaceSection = "InterfaceSettings";
constexpr const char* componentFolder = "Component Presets";
constexpr const char* noFolder = "There is no folder to keep settings in";
constexpr const char* noComponentDefault = "Default component preset not found.";

/// Whether the next bytes of the stream are these.
bool continuesWith(std::istream& stream, std::string_view bytes)
{
    std::string read(bytes.size(), '\0');
    return stream.read(read.data(), static_cast<std::streamsize>(read.size())) && read == bytes;
}

/// Sets a flag for as long as it lives.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flagToSet) : flag(flagToSet) { flag = true; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;
    ~ScopedFlag() { flag = false; }

private:
    bool& flag;
};

}  // namespace

void GenericPlugin::collectParameters()
{
    storedParameters.signature = code;
    unstoredParameters.signature = code;
    unstoredParameters.section.assign(interfaceSection);
    for (int i = 0; i < parameterCount(); ++i)
        (isStored(parameter(i)) ? storedParameters : unstoredParameters).add(parameter(i));
}

void GenericPlugin::markModified() noexcept
{
    modifications.fetch_add(1, std::memory_order_relaxed);
    if (presetState.modified.value())
        return;
    presetState.modified.assign(true);
    tellListener(Listener::PresetChanged, 0);
}

/// The plug-in is as this preset has it.
void GenericPlugin::goBy(const PresetInfo& preset)
{
    presetState.modified.assign(false);
    presetState.name.assign(preset.name);
    presetState.path.assign(preset.path);
    tellHost(StateChange::Preset);
    tellListener(Listener::PresetChanged, 0);
}

void GenericPlugin::tellHost(StateChange change)
{
    if (adapter)
        adapter->stateChanged(change);
}

// Whole presets.

ErrorResult GenericPlugin::loadPreset(const PresetInfo& preset)
{
    ErrorResult result;
    beginParameterBatch();
    std::vector<float> unstored;
    unstoredParameters.readValues(unstored);
    loadPresetFile(result, preset);
    if (loadingDefaultPreset)
        loadInterfaceDefaults();
    else
        unstoredParameters.writeValues(unstored);
    requestSoftReset();
    endParameterBatch();
    if (!result.succeeded())
        return result;
    goBy(preset);
    return result;
}

ErrorResult GenericPlugin::loadDefaultPreset(const PresetInfo* preset)
{
    const ScopedFlag loading(loadingDefaultPreset);
    if (preset)
        return loadPreset(*preset);
    loadInterfaceDefaults();
    return {};
}

std::unique_ptr<CustomPresetLoader> GenericPlugin::createPresetLoader()
{
    auto loader = std::make_unique<CustomPresetLoader>(storedParameters, *this);
    loader->currentVersion = presetFormatVersion();
    return loader;
}

void GenericPlugin::loadPresetFile(ErrorResult& result, const PresetInfo& preset)
{
    PresetFile(preset.path).read(*createPresetLoader(), result);
}

ErrorResult GenericPlugin::savePreset(const PresetInfo& preset)
{
    ErrorResult result;
    const auto form = hasFlag(WritesTextPresets) ? PresetFile::Form::Text : PresetFile::Form::Binary;
    const PresetWriter writer(storedParameters, this);
    if (!PresetFile(preset.path).write(writer, result, presetFormatVersion(), form))
        return result;
    presetWasSaved(preset);
    goBy(preset);
    return result;
}

std::string GenericPlugin::defaultPresetName() const
{
    return isEffect() ? "Default Setting" : "Default Sound";
}

void GenericPlugin::setPresetName(std::string_view newName, int length)
{
    if (length >= 0)
        newName = newName.substr(0, static_cast<std::size_t>(length));
    if (presetState.name.value() != newName) {
        presetState.name.assign(std::string(newName));
        presetState.path.assign(findPresetPath(newName));
    }
    if (length == WholeNameForHost)
        tellHost(StateChange::Preset);
    tellListener(Listener::PresetChanged, 0);
}

void GenericPlugin::takePresetName(std::string_view newName, bool modified)
{
    presetState.modified.assign(modified);
    setPresetName(newName, WholeNameForHost);
}

// The host's state.

bool GenericPlugin::presetEqualsState(std::istream& stream) const
{
    std::ostringstream present;
    BinaryDataWriter writer(present);
    writeParameterState(writer);
    BinaryDataReader reader(stream);
    if (!continuesWith(stream, present.view()) || !reader.readMagic(code))
        return false;
    std::string name;
    reader.readString(name);
    reader.readInt();  // the group of instances is no part of a preset
    const bool wasAutoName = reader.readInt() != 0;
    std::string instance;
    reader.readString(instance);
    if (!reader.good() || name != presetState.name.value() || wasAutoName != hasAutoName() ||
        (!hasAutoName() && instance != instanceName()))
        return false;
    if (reader.version() < 2)
        return true;
    const bool wasModified = reader.readInt() != 0;
    return reader.good() && wasModified == presetState.modified.value();
}

// The parameters that no preset holds.

std::string GenericPlugin::interfaceDefaultsPath() const
{
    const std::string folder = productDataFolder(versionedName);
    return folder.empty() ? folder : folder + interfaceDefaultsName;
}

void GenericPlugin::loadInterfaceDefaults()
{
    const std::string path = interfaceDefaultsPath();
    if (unstoredParameters.count() == 0 || !fileExists(path))
        return;
    // A file that can't be read leaves the defaults.
    ErrorResult ignored;
    CollectionPresetLoader loader(unstoredParameters);
    PresetFile(path).read(loader, ignored, presetFormatVersion());
}

ErrorResult GenericPlugin::saveInterfaceDefaults(const AbstractPluginParameter& parameter)
{
    ErrorResult result;
    if (unstoredParameters.findKey(parameter.displayName()) < 0)
        return result;
    const std::string path = interfaceDefaultsPath();
    if (path.empty()) {
        result.reportError(ErrorReporter::failure, noFolder);
        return result;
    }
    createFolders(std::string(folderOf(path)));  // what fails here, the writing says
    const PresetWriter writer(unstoredParameters, nullptr);
    const PresetFile file(path);
    // Only this one: other instances may have kept the others.
    ErrorResult ofRewrite;
    if (!file.rewrite(writer, ofRewrite, presetFormatVersion(), parameter.index(), 1))
        file.write(writer, result, presetFormatVersion());
    return result;
}

// Presets of sections.

std::string GenericPlugin::componentPresetFolder(int group) const
{
    const std::string folder = productDataFolder(versionedName);
    return folder.empty()
               ? folder
               : withSeparator(withSeparator(folder + componentFolder) + componentPresets.folder(group));
}

PresetInfo GenericPlugin::defaultComponentPreset(int group) const
{
    return PresetInfo(componentPresetFolder(group) + ComponentPresets::defaultName +
                      componentPresets.extension(group));
}

ErrorResult GenericPlugin::loadComponentPreset(const PresetInfo& preset, int version, int group,
                                               int sectionNumber)
{
    return componentPresets.load(preset, version, group, sectionNumber);
}

ErrorResult GenericPlugin::loadDefaultComponentPreset(int group, int sectionNumber)
{
    if (const auto found = findComponentPreset(group, ComponentPresets::defaultName))
        return loadComponentPreset(*found, ComponentPresets::formatVersion, group, sectionNumber);
    ErrorResult result;
    result.reportError(ErrorReporter::failure, noComponentDefault);
    return result;
}

ErrorResult GenericPlugin::saveComponentPreset(const PresetInfo& preset, int version, int group,
                                               int sectionNumber)
{
    ErrorResult result = componentPresets.save(preset, version, group, sectionNumber);
    componentPresetWasSaved(group);
    return result;
}

ErrorResult GenericPlugin::saveDefaultComponentPreset(int group, int sectionNumber)
{
    const std::string folder = componentPresetFolder(group);
    if (folder.empty()) {
        ErrorResult result;
        result.reportError(ErrorReporter::failure, noFolder);
        return result;
    }
    createFolders(folder);  // what fails here, the writing says
    return saveComponentPreset(defaultComponentPreset(group), ComponentPresets::formatVersion, group,
                               sectionNumber);
}
