#include "foundation/Paths.h"

#include <filesystem>
#include <system_error>

bool createFolders(const std::string& path)
{
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return folderExists(path);
}

bool fileExists(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool folderExists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

std::string_view fileName(std::string_view path) noexcept { return path.substr(folderOf(path).size()); }

std::string_view folderOf(std::string_view path) noexcept
{
    return path.substr(0, path.rfind(pathSeparator) + 1);  // "nowhere" is the largest number: 0
}

std::string_view baseName(std::string_view path) noexcept
{
    const std::string_view name = fileName(path);
    return name.substr(0, name.rfind('.'));
}

std::string withSeparator(std::string path)
{
    if (!path.empty() && path.back() != pathSeparator)
        path += pathSeparator;
    return path;
}
