#pragma once

#include <filesystem>
#include <vector>

/// Where the plug-in's module may lie, best first: the build that this tool belongs to, the folders of
/// CLAP_PATH, and those where hosts look anyway.
std::vector<std::filesystem::path> moduleFolders();

/// The first of `folders` that holds the plug-in's module, with the module's name.
/// Throws RenderError if none does.
std::filesystem::path locateModule(const std::vector<std::filesystem::path>& folders);
