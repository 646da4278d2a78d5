#include "product/SordelinPlugin.h"

#include "core/PresetFolderSetting.h"
#include "foundation/BinaryDataReader.h"
#include "presets/PresetFile.h"
#include "product/SordelinComponentPresets.h"
#include "product/SordelinInfo.h"
#include "product/SordelinPresetLoader.h"

SordelinPlugin::SordelinPlugin() : SordelinParameters(static_cast<GenericPluginBase&>(*this), *this)
{
    static_cast<GenericPluginInfo&>(*this) = sordelinInfo();
    initialise();
    midiStateParameter = &receiveMidi;
    addSordelinComponentPresets(componentPresets, *this, code);
    joinProcess();
    const std::optional<PresetInfo> preset = findPreset(defaultPresetName());
    loadDefaultPreset(preset ? &*preset : nullptr);
}

void SordelinPlugin::initialiseProcessWideData()
{
    GenericPlugin::initialiseProcessWideData();
    // The presets of the major version before this one.
    const std::string before = presetFolderSetting(GenericPluginInfo::name, 1, {});
    if (!before.empty())
        presetManager().addExtraFolder(before, "V1 Preset Folder");
}

std::unique_ptr<CustomPresetLoader> SordelinPlugin::createPresetLoader()
{
    return std::make_unique<SordelinPresetLoader>(*this);
}

void SordelinPlugin::loadPresetFile(ErrorResult& result, const PresetInfo& preset)
{
    const float frozen = delayFreeze.currentValue();
    const float dry = dryEnabled.currentValue();
    const PresetFile file(preset.path);
    CustomPresetLoader present(storedParameters, *this);
    present.currentVersion = presetFormatVersion();
    ErrorResult ofPresent;
    ErrorResult ofOlder;
    // What neither takes is explained in terms of today's presets.
    if (!file.read(present, ofPresent) && !file.read(*createPresetLoader(), ofOlder))
        result.reportError(ofPresent.code(), ofPresent.message());
    if (!isLoadingDefault())
        dryEnabled.setValue(dry, announceChange);
    delayFreeze.setValue(frozen, announceChange);
}

void SordelinPlugin::readDisplayData(BinaryDataReader& reader)
{
    GenericPlugin::readDisplayData(reader);
    for (float& value : displayValues)
        value = reader.readFloat();
}

SordelinPlugin::~SordelinPlugin() { leaveProcess(); }

VersionInfo SordelinPlugin::version() const { return sordelinVersion(); }

std::unique_ptr<PluginSettings> SordelinPlugin::createSettings()
{
    return std::make_unique<SordelinSettings>(storeKey(), interfaceLimits());
}

int SordelinPlugin::defaultInterfaceHeight()
{
    return sordelinSettings().showModulation.value() ? modulationHeight : plainHeight;
}

int SordelinPlugin::defaultInterfaceWidth()
{
    return sordelinSettings().interfaceLayout.value() == InterfaceLayout::Wide ? wideWidth : normalWidth;
}
