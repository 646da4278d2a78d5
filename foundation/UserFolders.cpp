#include "foundation/UserFolders.h"

#include "foundation/OpenFile.h"
#include "foundation/Paths.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view vendor = "Morvelane";
constexpr std::string_view settingsRoot = "Software\\";
constexpr std::string_view documentsKey = "XDG_DOCUMENTS_DIR=\"";
constexpr std::string_view homeVariable = "$HOME";
constexpr std::size_t accountBytes = 16384;

bool isAbsolute(std::string_view path) noexcept { return !path.empty() && path.front() == pathSeparator; }

/// A variable that names a folder. One that isn't absolute counts as unset, as the base directory rules have
/// it.
std::string folderVariable(const char* name)
{
    const char* value = std::getenv(name);
    return value && isAbsolute(value) ? withSeparator(value) : std::string();
}

std::string accountHome()
{
    std::vector<char> buffer(accountBytes);
    passwd account{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &account, buffer.data(), buffer.size(), &found) != 0 || !found || !found->pw_dir)
        return {};
    return isAbsolute(found->pw_dir) ? withSeparator(found->pw_dir) : std::string();
}

std::string homeFolder()
{
    std::string home = folderVariable("HOME");
    return home.empty() ? accountHome() : home;
}

std::string belowHome(std::string_view folder)
{
    std::string home = homeFolder();
    return home.empty() ? home : withSeparator(home.append(folder));
}

std::string folderOrBelowHome(const char* variable, std::string_view fallback)
{
    std::string folder = folderVariable(variable);
    return folder.empty() ? belowHome(fallback) : folder;
}

/// A text between quotes, as a shell reads it: up to the closing one, a "\" taking the next character as it
/// is. Empty without a closing quote.
std::string quotedText(std::string_view line)
{
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            return text;
        if (line[i] == '\\' && i + 1 < line.size())
            ++i;
        text += line[i];
    }
    return {};
}

/// A folder as the desktop's list has it: absolute, or below the home. Empty if it is neither.
std::string listedFolder(std::string_view text)
{
    if (isAbsolute(text))
        return withSeparator(std::string(text));
    if (!text.starts_with(homeVariable))
        return {};
    text.remove_prefix(homeVariable.size());
    if (!text.empty() && !isAbsolute(text))
        return {};  // another variable, whose name begins the same
    text.remove_prefix(std::min(text.find_first_not_of(pathSeparator), text.size()));
    return belowHome(text);
}

std::string listedDocumentsFolder()
{
    std::string folder;
    const auto list = openFile(configurationFolder() + "user-dirs.dirs", std::ios_base::in);
    for (std::string line; std::getline(*list, line);) {
        line.erase(0, line.find_first_not_of(" \t"));
        if (line.starts_with(documentsKey))
            folder = listedFolder(quotedText(std::string_view(line).substr(documentsKey.size())));
    }
    return folder;
}

/// `folder` and a path below it; empty if there is no folder.
std::string below(std::string folder, const std::string& path)
{
    return folder.empty() ? folder : withSeparator(folder.append(path));
}

}  // namespace

std::string applicationDataFolder() { return folderOrBelowHome("XDG_DATA_HOME", ".local/share"); }

std::string configurationFolder() { return folderOrBelowHome("XDG_CONFIG_HOME", ".config"); }

std::string documentsFolder()
{
    std::string folder = listedDocumentsFolder();
    return folder.empty() ? belowHome("Documents") : folder;
}

std::string productDataFolder(const std::string& product)
{
    return below(applicationDataFolder(), std::string(vendor).append("/").append(product));
}

std::string presetFolder(const std::string& product)
{
    return below(documentsFolder(), std::string(vendor).append("/Presets/").append(product));
}

std::string settingsKey() { return std::string(settingsRoot).append(vendor); }

std::string settingsKey(const std::string& product, int majorVersion)
{
    return settingsKey()
        .append("\\")
        .append(product)
        .append("\\")
        .append(std::to_string(majorVersion))
        .append(".0");
}

std::string settingsPath(const std::string& key)
{
    std::string path = configurationFolder();
    if (path.empty())
        return path;
    std::string below = key.starts_with(settingsRoot) ? key.substr(settingsRoot.size()) : key;
    std::replace(below.begin(), below.end(), '\\', pathSeparator);
    return path.append(below).append(".toml");
}
