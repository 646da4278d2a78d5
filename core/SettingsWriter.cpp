#include "core/SettingsWriter.h"

#include "foundation/SettingsFile.h"
#include "foundation/UserFolders.h"

SettingsWriter::~SettingsWriter()
{
    if (!values.empty())
        SettingsFile(settingsPath(key)).write(values);
}

void SettingsWriter::bytes(const std::string& name, std::vector<std::uint8_t>& buffer)
{
    values.insert_or_assign(name, buffer);
}

std::int32_t SettingsWriter::intValue(const std::string& name, std::int32_t value, std::int32_t)
{
    values.insert_or_assign(name, value);
    return value;
}

std::string SettingsWriter::stringValue(const std::string& name, const std::string& value, const std::string&)
{
    values.insert_or_assign(name, value);
    return value;
}
