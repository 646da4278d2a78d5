#include "core/SettingsReader.h"

#include "foundation/SettingsFile.h"
#include "foundation/UserFolders.h"

SettingsReader::SettingsReader(const std::string& storeKey)
    : values(SettingsFile(settingsPath(storeKey)).read())
{}

template <class T>
const T* SettingsReader::find(const std::string& key) const
{
    const auto found = values.find(key);
    return found == values.end() ? nullptr : std::get_if<T>(&found->second);
}

void SettingsReader::bytes(const std::string& key, std::vector<std::uint8_t>& buffer)
{
    const auto* found = find<std::vector<std::uint8_t>>(key);
    buffer = found ? *found : std::vector<std::uint8_t>();
}

std::int32_t SettingsReader::intValue(const std::string& key, std::int32_t, std::int32_t fallback)
{
    const auto* found = find<std::int32_t>(key);
    return found ? *found : fallback;
}

std::string SettingsReader::stringValue(const std::string& key, const std::string&,
                                        const std::string& fallback)
{
    const auto* found = find<std::string>(key);
    return found ? *found : fallback;
}
