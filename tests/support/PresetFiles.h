#pragma once

#include "presets/PresetFolder.h"
#include "support/TemporaryFolder.h"

#include <sstream>
#include <string>

/// A text of texts and numbers.
template <class... Parts>
std::string joined(const Parts&... parts)
{
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

/// Makes a file for tests that only look at its name, and the folders it lies in.
inline std::string putPreset(const TemporaryFolder& folder, const std::string& path,
                             const std::string& content = "x")
{
    const std::filesystem::path file = folder / path.c_str();
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
}

/// The names of a list of presets, with blanks between them.
inline std::string namesOf(const std::vector<PresetInfo*>& list)
{
    std::string names;
    for (const PresetInfo* preset : list)
        names.append(names.empty() ? "" : " ").append(preset->name);
    return names;
}

inline std::string namesOf(const PresetFolder& folder)
{
    std::vector<PresetInfo*> list;
    folder.appendPresets(list);
    return namesOf(list);
}
