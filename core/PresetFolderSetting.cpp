#include "core/PresetFolderSetting.h"

#include "core/SettingsReader.h"
#include "foundation/UserFolders.h"

std::string presetFolderSetting(const std::string& product, int majorVersion, const std::string& fallback)
{
    return SettingsReader(settingsKey(product, majorVersion)).stringValue(presetFolderKey, {}, fallback);
}
