#pragma once

#include <filesystem>
#include <ostream>
#include <stdexcept>

/// A preset that can't be read or written, in the words for its user.
class PresetToolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The two forms of a preset file.
enum class PresetForm { Binary, Text };

/// Prints what a preset says about itself, and what in it differs from the defaults. Throws PresetToolError.
void showPreset(const std::filesystem::path& file, std::ostream& out);

/// Writes a preset in a form, over `to` if that is there. Throws PresetToolError.
void convertPreset(const std::filesystem::path& from, const std::filesystem::path& to, PresetForm form);

/// Reads all presets in a folder and the folders in it, and prints those that don't load. Returns their
/// number. Throws PresetToolError if the folder can't be read.
int checkPresets(const std::filesystem::path& folder, std::ostream& out);
