#include "presets/PresetCache.h"

#include "foundation/Paths.h"
#include "presets/FavoritesFile.h"
#include "presets/PresetCacheFile.h"
#include "presets/PresetMetadata.h"

#include <new>
#include <system_error>
#include <utility>

namespace {

/// True if they are others.
bool takeNumbers(PresetInfo& preset, const PresetInfo& from)
{
    const bool areNew = preset.bank != from.bank || preset.program != from.program;
    preset.bank = from.bank;
    preset.program = from.program;
    preset.label = from.label;
    return areNew;
}

}  // namespace

PresetCache::PresetCache(std::string file) : path(std::move(file))
{
    events.push_back(&change);
    PresetCacheFile kept;
    if (!kept.read(path))
        return;
    take(kept);
    moveFavorites();
    readFavorites();
}

PresetCache::~PresetCache() { stopWorker(); }

std::uint64_t PresetCache::hashOf(std::string_view text) noexcept
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3;
    }
    return hash;
}

void PresetCache::take(PresetCacheFile& kept)
{
    roots = std::move(kept.roots);
    favoritesToMove = std::move(kept.favorites);
    for (PresetInfo& preset : kept.presets) {
        const std::uint64_t hash = hashOf(preset.path);
        keep(hash, std::move(preset));
    }
    isChanged = !favoritesToMove.empty();
}

// Favourites.

/// Brings the favourites of an older file to the files of their roots. What has no root yet waits for it: the
/// older file stays until then, so that none gets lost.
void PresetCache::moveFavorites()
{
    if (favoritesToMove.empty())
        return;
    std::erase_if(favoritesToMove, [&](const std::string& favorite) {
        const std::string* root = rootOf(favorite);
        return root && FavoritesFile(*root).change({favorite}, {}).succeeded();
    });
    saveFile();
}

void PresetCache::readFavorites()
{
    favorites.clear();
    for (const std::string& root : roots) {
        for (const std::string& favorite : FavoritesFile(root).read())
            favorites.insert(hashOf(favorite));
    }
    for (const std::string& favorite : favoritesToMove)
        favorites.insert(hashOf(favorite));
}

/// The innermost root that a path lies in, or null.
const std::string* PresetCache::rootOf(std::string_view presetPath) const
{
    const std::string* innermost = nullptr;
    for (const std::string& root : roots) {
        if (presetPath.starts_with(root) && (!innermost || root.size() > innermost->size()))
            innermost = &root;
    }
    return innermost;
}

bool PresetCache::isFavorite(const PresetInfo& preset)
{
    const ScopedLock guard(*this);
    return favorites.contains(hashOf(preset.path));
}

ErrorResult PresetCache::setFavorite(const PresetInfo& preset, bool isOne)
{
    const ScopedUpdate bracket(*this);
    const ScopedLock guard(*this);
    ErrorResult result;
    const std::string* root = rootOf(preset.path);
    if (!root) {
        result.reportError(ErrorReporter::failure, "The preset lies in no preset folder.");
        return result;
    }
    const std::vector<std::string> paths{preset.path};
    result = FavoritesFile(*root).change(isOne ? paths : std::vector<std::string>(),
                                         isOne ? std::vector<std::string>() : paths);
    if (!result.succeeded())
        return result;
    readFavorites();  // others may have changed them, too

    // What the file says goes before what is known: it may have been changed since.
    PresetInfo current(preset);
    readPresetMetadata(current.path, current);
    result = writePresetMetadata(current);
    const std::uint64_t hash = hashOf(current.path);
    keep(hash, std::move(current));
    isChanged = true;
    saveFile();
    change.raised = true;
    changed();
    return result;
}

// What is known of presets.

PresetInfo PresetCache::infoOf(const std::string& presetPath)
{
    const ScopedLock guard(*this);
    const auto found = known.find(hashOf(presetPath));
    return found == known.end() ? PresetInfo() : *found->second;
}

std::vector<PresetInfo> PresetCache::find(std::string_view text)
{
    const ScopedLock guard(*this);
    std::vector<PresetInfo> presets;
    for (const PresetInfo* preset : index.find(text))
        presets.push_back(*preset);
    return presets;
}

std::size_t PresetCache::size()
{
    const ScopedLock guard(*this);
    return known.size();
}

void PresetCache::keep(std::uint64_t hash, PresetInfo preset)
{
    index.remove(hash);
    auto& place = known[hash];
    place = std::make_unique<PresetInfo>(std::move(preset));
    const std::string* root = rootOf(place->path);
    const std::string_view folder = folderOf(place->path);
    index.add(hash, *place, root ? folder.substr(root->size()) : std::string_view());
}

// The worker.

void PresetCache::update(const std::vector<PresetInfo*>& presets, const std::vector<std::string>& newRoots)
{
    stopWorker();
    std::vector<PresetInfo> list;
    for (const PresetInfo* preset : presets)
        list.push_back(*preset);
    {
        const ScopedLock guard(*this);
        std::set<std::string> rootsNow;
        for (const std::string& root : newRoots) {
            if (!root.empty())
                rootsNow.insert(withSeparator(root));
        }
        isChanged = isChanged || rootsNow != roots;
        roots = std::move(rootsNow);
        moveFavorites();
        // What lies in none of the roots has no place any more.
        std::erase_if(favoritesToMove, [&](const std::string& favorite) { return !rootOf(favorite); });
        readFavorites();
        seen.clear();
    }
    stop.store(false);
    try {
        worker = std::thread([this, list] { work(list); });
    } catch (const std::system_error&) {
        work(list);  // no thread to be had: better late than never
    }
}

void PresetCache::waitForWorker()
{
    if (worker.joinable())
        worker.join();
}

void PresetCache::stopWorker()
{
    stop.store(true);
    waitForWorker();
}

void PresetCache::work(const std::vector<PresetInfo>& list)
{
    try {
        lookInto(list);
    } catch (const std::bad_alloc&) {
        // What was looked into until then stands.
    }
}

void PresetCache::lookInto(const std::vector<PresetInfo>& list)
{
    for (const PresetInfo& preset : list) {
        if (stop.load())
            return;
        const std::uint64_t hash = hashOf(preset.path);
        if (isKnown(preset, hash))
            continue;
        // The file is read without the lock: nobody waits for a slow disk.
        PresetInfo read(preset);
        readPresetMetadata(read.path, read);
        const ScopedLock guard(*this);
        keep(hash, std::move(read));
        isChanged = true;
    }
    const ScopedLock guard(*this);
    if (dropUnseen() || isChanged)
        saveFile();
}

/// Also notes that the preset is there.
bool PresetCache::isKnown(const PresetInfo& preset, std::uint64_t hash)
{
    const ScopedLock guard(*this);
    seen.insert(hash);
    const auto found = known.find(hash);
    if (found == known.end() || found->second->modificationTime != preset.modificationTime)
        return false;
    isChanged = takeNumbers(*found->second, preset) || isChanged;
    return true;
}

bool PresetCache::dropUnseen()
{
    return std::erase_if(known, [&](const auto& entry) {
               if (seen.contains(entry.first))
                   return false;
               index.remove(entry.first);
               return true;
           }) != 0;
}

void PresetCache::saveFile()
{
    if (!favoritesToMove.empty())
        return;  // only the older file has them
    PresetCacheFile file;
    file.roots = roots;
    for (const auto& [hash, preset] : known)
        file.presets.push_back(*preset);
    if (file.write(path).succeeded())
        isChanged = false;  // else the next time
}
