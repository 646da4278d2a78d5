#pragma once

#include <string>
#include <string_view>

// Paths are UTF-8 texts; that of a folder may end in the separator. Thread: any but audio.

constexpr char pathSeparator = '/';

/// Makes a folder and all its parents. True if it exists afterwards.
bool createFolders(const std::string& path);
/// True for a file, false for a folder.
bool fileExists(const std::string& path);
bool folderExists(const std::string& path);

/// What stands behind the last separator.
std::string_view fileName(std::string_view path) noexcept;
/// Up to and with the last separator; empty if there is none.
std::string_view folderOf(std::string_view path) noexcept;
/// The file name without what follows its last ".".
std::string_view baseName(std::string_view path) noexcept;
/// The path with a separator at its end. An empty path stays empty.
std::string withSeparator(std::string path);
