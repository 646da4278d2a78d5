#include "core/PresetFolderSetting.h"

#include "foundation/SettingsFile.h"
#include "foundation/UserFolders.h"

std::string presetFolderSetting(const std::string& product, int majorVersion, const std::string& fallback)
{
    const SettingValues settings = SettingsFile(settingsPath(settingsKey(product, majorVersion))).read();
    const auto found = settings.find("PresetFolder");
    const auto* text = found == settings.end() ? nullptr : std::get_if<std::string>(&found->second);
    return text ? *text : fallback;
}
