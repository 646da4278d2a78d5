#include "core/ComponentPresets.h"

#include "presets/CollectionPresetLoader.h"
#include "presets/PresetFile.h"

#include <utility>

int ComponentPresets::addGroup(std::string extension, std::string folder)
{
    groups.push_back({std::move(extension), std::move(folder), {}});
    return groupCount() - 1;
}

PresetParameterCollection& ComponentPresets::addSection(int group, const std::string& signature)
{
    auto& sections = groups[static_cast<std::size_t>(group)].sections;
    sections.push_back(std::make_unique<PresetParameterCollection>(owner));
    sections.back()->signature = signature;
    return *sections.back();
}

ErrorResult ComponentPresets::load(const PresetInfo& preset, int version, int group, int number) const
{
    ErrorResult result;
    CollectionPresetLoader loader(section(group, number));
    PresetFile(preset.path).read(loader, result, version);
    return result;
}

ErrorResult ComponentPresets::save(const PresetInfo& preset, int version, int group, int number) const
{
    ErrorResult result;
    PresetFile(preset.path).write(PresetWriter(section(group, number), nullptr), result, version);
    return result;
}
