#include "presets/PresetManager.h"

#include "presets/PresetCache.h"

#include <algorithm>

namespace {

std::string labelOf(const PresetInfo& preset)
{
    std::string label("(");
    label.append(std::to_string(preset.bank)).append("/").append(std::to_string(preset.program)).append(") ");
    return label.append(preset.name);
}

}  // namespace

PresetManager::PresetManager(std::string presetExtension) : PresetFolder(std::move(presetExtension)) {}

void PresetManager::rescan(const std::string& newPath)
{
    scanRoot(newPath);
    tellCache();
}

void PresetManager::rescanAll()
{
    scan(path(), usualBudgetMs);
    for (const auto& extra : extras) {
        const std::string name = extra->name();
        extra->scan(extra->path(), usualBudgetMs);
        extra->setName(name);
    }
    number();
    tellCache();
}

void PresetManager::chooseRoot(const std::string& wanted, const std::string& fallback)
{
    const std::string wantedPath = withSeparator(wanted);
    if (!isThere(wantedPath, usualBudgetMs))
        rescan(fallback);
    else if (wantedPath != path())
        rescan(wantedPath);
}

void PresetManager::addExtraFolder(const std::string& newPath, std::string name)
{
    extras.push_back(std::make_unique<PresetFolder>(newPath, extension(), usualBudgetMs));
    extras.back()->setName(std::move(name));
}

void PresetManager::scanRoot(const std::string& newPath)
{
    scan(newPath, usualBudgetMs);
    number();
}

void PresetManager::number()
{
    std::vector<PresetInfo*> list;
    listPresets(list);
    int place = 0;
    for (PresetInfo* preset : list) {
        preset->bank = place / programsPerBank;
        preset->program = place % programsPerBank;
        preset->label = labelOf(*preset);
        ++place;
    }
}

void PresetManager::listPresets(std::vector<PresetInfo*>& list)
{
    list.clear();
    appendPresets(list);
    rootCount = static_cast<std::uint32_t>(list.size());
    for (const auto& extra : extras)
        extra->appendPresets(list);
}

PresetInfo* PresetManager::findByName(std::string_view presetName, Scope scope)
{
    std::vector<PresetInfo*> list;
    listPresets(list);
    if (scope == Scope::RootTree)
        list.resize(rootCount);
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const PresetInfo* preset) { return preset->name == presetName; });
    return found == list.end() ? nullptr : *found;
}

PresetInfo* PresetManager::neighbour(std::string_view presetPath, Direction direction)
{
    std::vector<PresetInfo*> list;
    listPresets(list);
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const PresetInfo* preset) { return preset->path == presetPath; });
    if (found == list.end() || direction == Direction::Same)
        return found == list.end() ? nullptr : *found;
    const bool isNext = direction == Direction::Next;
    const auto place = static_cast<std::size_t>(found - list.begin());
    std::size_t target = (place + (isNext ? 1 : list.size() - 1)) % list.size();
    if (place < rootCount && target >= rootCount)
        target = isNext ? 0 : rootCount - 1;
    return list[target];
}

void PresetManager::tellCache()
{
    if (!cache)
        return;
    std::vector<PresetInfo*> list;
    listPresets(list);
    std::vector<std::string> roots{path()};
    for (const auto& extra : extras)
        roots.push_back(extra->path());
    cache->update(list, roots);
}
