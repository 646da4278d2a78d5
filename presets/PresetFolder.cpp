#include "presets/PresetFolder.h"

#include "foundation/TextCompare.h"

#include <algorithm>
#include <charconv>

namespace {

bool isWhiteSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Takes the number off the front of a folder's name. What has none, or none that can be read, counts as 0.
int takeSortPrefix(std::string& name)
{
    if (!name.starts_with('_'))
        return PresetFolder::noPriority;
    int priority = 0;
    const char* end = name.data() + name.size();
    const char* digits = name.data() + 1;
    const char* rest = std::find_if(digits, end, [](char c) { return c < '0' || c > '9'; });
    if (std::from_chars(digits, rest, priority).ec != std::errc())
        priority = 0;
    name.erase(0, static_cast<std::size_t>(std::find_if_not(rest, end, isWhiteSpace) - name.data()));
    return priority;
}

bool standsBefore(const PresetFolder& a, const PresetFolder& b)
{
    if (a.sortPriority() != b.sortPriority())
        return a.sortPriority() < b.sortPriority();
    return compareNoCase(a.name(), b.name()) < 0;
}

}  // namespace

PresetFolder::PresetFolder(std::string extension) : fileExtension(std::move(extension)) {}

PresetFolder::PresetFolder(const std::string& path, std::string extension, int budgetMs)
    : PresetFolder(std::move(extension))
{
    scan(path, budgetMs);
}

PresetFolder::PresetFolder(std::string path, std::string extension, const FolderTree& tree)
    : PresetFolder(std::move(extension))
{
    rename(path);
    fill(tree);
}

void PresetFolder::scan(const std::string& newPath, int budgetMs)
{
    const std::string path = withSeparator(newPath);  // `newPath` may be a text of this object
    folders.clear();
    entries.clear();
    answered = false;
    rename(path);
    if (folderPath.empty() || budgetMs < 1)
        return;
    if (!reader)
        reader = std::make_unique<FolderScan>();
    fill(reader->read(folderPath, fileExtension, FolderScan::Milliseconds(budgetMs)));
}

bool PresetFolder::isThere(const std::string& path, int budgetMs)
{
    if (!reader)
        reader = std::make_unique<FolderScan>();
    return !path.empty() && reader->exists(path, FolderScan::Milliseconds(budgetMs));
}

void PresetFolder::rename(const std::string& path)
{
    folderPath = path;
    shownName = path.empty() ? path : fileName(std::string_view(path).substr(0, path.size() - 1));
    priority = takeSortPrefix(shownName);
}

void PresetFolder::fill(const FolderTree& tree)
{
    answered = tree.answered;
    for (const auto& folder : tree.folders)
        folders.emplace_back(new PresetFolder(std::string(folderPath).append(folder->name) + pathSeparator,
                                              fileExtension, *folder));
    // Names that are equal but for their letter case go by their bytes: no order depends on the disk's.
    std::sort(folders.begin(), folders.end(), [](const auto& a, const auto& b) {
        return standsBefore(*a, *b) || (!standsBefore(*b, *a) && a->path() < b->path());
    });
    for (const FolderTree::File& file : tree.files) {
        entries.push_back(std::make_unique<PresetInfo>(folderPath + file.name));
        entries.back()->modificationTime = file.modificationTime;
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        const int order = compareNoCase(a->name, b->name);
        return order != 0 ? order < 0 : a->path < b->path;
    });
}

void PresetFolder::appendPresets(std::vector<PresetInfo*>& list) const
{
    for (const auto& folder : folders)
        folder->appendPresets(list);
    for (const auto& entry : entries)
        list.push_back(entry.get());
}
