#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// One line of a preset's source that sets a parameter.
struct FactorySetting {
    std::string name;  // of the parameter; in a section preset without the section's name
    std::string text;  // its value as the plug-in shows it
    int line = 0;      // in the file, from 1
};

/// A factory preset as it stands in its source.
struct FactorySource {
    std::filesystem::path file;
    std::string name;    // the file's, without its extension
    std::string folder;  // below the root, "/" between levels; empty at the root
    std::string author;
    std::string description;
    std::vector<std::string> tags;
    std::vector<FactorySetting> settings;
    std::string section;  // whose names are left out in a section preset, such as "XLFO 1"; mostly empty

    /// "Dub/Night Bus".
    std::string label() const { return folder.empty() ? name : folder + "/" + name; }
};

/// Reads one source. Throws RenderError, with file and line, for what isn't a preset's text, for a key that
/// stands twice, and for a whole preset without a description.
FactorySource readFactorySource(const std::filesystem::path& file, const std::string& folder);

/// Reads all sources below `root`, by folder and name: whole presets and those of sections, which their
/// extensions tell apart. Throws as above, and if there are none.
std::vector<FactorySource> readFactorySources(const std::filesystem::path& root);
