// The settings of an instance and those of all instances: where they are stored, and what follows from them.
#include "core/GenericPlugin.h"
#include "core/PresetFolderSetting.h"
#include "core/SettingsReader.h"
#include "core/SettingsWriter.h"
#include "core/SharedPluginData.h"
#include "foundation/UserFolders.h"

SharedSettings& GenericPlugin::sharedSettings() { return *shared->settings; }

GraphicsAccelerationMode GenericPlugin::graphicsMode() const { return shared->drawing.graphicsMode(); }

float GenericPlugin::interfaceScale() const { return shared->drawing.interfaceScale(); }

std::string GenericPlugin::storeKey() const { return settingsKey(GenericPluginInfo::name, version().major); }

InterfaceLimits GenericPlugin::interfaceLimits() const
{
    InterfaceLimits limits;
    limits.canResize = canResizeInterface();
    limits.layoutCount = interfaceLayoutCount();
    limits.panelCount = interfacePanelCount();
    limits.minimumWidth = interfaceMinimumWidth();
    limits.minimumHeight = interfaceMinimumHeight();
    return limits;
}

std::unique_ptr<PluginSettings> GenericPlugin::createSettings()
{
    return std::make_unique<PluginSettings>(storeKey(), interfaceLimits());
}

std::unique_ptr<SharedSettings> GenericPlugin::createSharedSettings()
{
    return std::make_unique<SharedSettings>(storeKey());
}

std::string GenericPlugin::presetRoot() const { return shared->presetManager->path(); }

void GenericPlugin::serializeSettings(SettingSerializer& serializer)
{
    sharedSettings().exchange(serializer);
    settings().exchange(serializer);
    shared->drawing.apply(sharedSettings());
    const std::string root =
        serializer.stringValue(presetFolderKey, presetRoot(), presetFolder(versionedName));
    if (!serializer.isWriter())
        choosePresetFolder(root);
}

void GenericPlugin::readSettings()
{
    SettingsReader makersReader(settingsKey());
    shared->drawing.readMakerSettings(makersReader);
    SettingsReader reader(storeKey());
    serializeSettings(reader);
}

void GenericPlugin::writeSettings()
{
    SettingsWriter writer(storeKey());
    serializeSettings(writer);
}
