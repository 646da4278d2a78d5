#pragma once

#include <filesystem>
#include <string>

/// The archive of a folder of preset sources, as FactoryArchive reads it. The same sources give the same
/// bytes, in whatever order the disk has them. Files and folders whose names begin with a "." are left out.
/// Throws PackError for what can't be packed, with the file and, within a preset, the line.
std::string packFolder(const std::filesystem::path& folder);
