#pragma once

#include "foundation/ErrorResult.h"
#include "presets/PresetInfo.h"
#include "presets/PresetParameterCollection.h"

#include <memory>
#include <string>
#include <vector>

/// Presets of single sections of a plug-in: groups of sections of one kind, so alike that a preset of one
/// fits them all. The parameters are part of whole presets too. Groups and sections are numbered from 0.
/// Thread: main.
class ComponentPresets {
public:
    static constexpr int formatVersion = 1;  // of every group
    static constexpr const char* defaultName = "Default";

    explicit ComponentPresets(GenericParameterOwner& parameterOwner) : owner(parameterOwner) {}

    /// @param extension  of files, with its "."
    /// @param folder     its name
    /// Returns the number of the group.
    int addGroup(std::string extension, std::string folder);
    /// The order in which parameters are added is the order in files. All sections of a group have the same
    /// number of parameters. @param signature  of files
    PresetParameterCollection& addSection(int group, const std::string& signature);

    int groupCount() const noexcept { return static_cast<int>(groups.size()); }
    int sectionCount(int group) const { return static_cast<int>(at(group).sections.size()); }
    const std::string& extension(int group) const { return at(group).extension; }
    const std::string& folder(int group) const { return at(group).folder; }
    const PresetParameterCollection& section(int group, int number) const
    {
        return *at(group).sections[static_cast<std::size_t>(number)];
    }

    /// Reads a file into a section, within one batch. The messages are PresetLoader's.
    ErrorResult load(const PresetInfo& preset, int version, int group, int number) const;
    /// Writes the whole file, or leaves what was there.
    ErrorResult save(const PresetInfo& preset, int version, int group, int number) const;

private:
    struct Group {
        std::string extension;
        std::string folder;
        std::vector<std::unique_ptr<PresetParameterCollection>> sections;
    };
    const Group& at(int group) const { return groups[static_cast<std::size_t>(group)]; }

    GenericParameterOwner& owner;
    std::vector<Group> groups;
};
