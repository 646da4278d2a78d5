#pragma once

#include "foundation/ErrorResult.h"
#include "foundation/Lock.h"
#include "foundation/NotifyEvent.h"
#include "foundation/UpdatedObject.h"
#include "presets/PresetInfo.h"
#include "presets/PresetWordIndex.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

struct PresetCacheFile;

/// What all preset files say about themselves, kept in a file of its own, so that presets can be searched
/// without opening them; and which of them the user likes best.
///
/// A thread of its own looks into new and changed files after every scan. The favourites are kept beside the
/// presets, a "Favorites.txt" in each root folder. Thread: main; the lock is held around every access, the
/// worker's too.
class PresetCache : public UpdatedObject, public LockedObject {
public:
    /// Reads what is kept. A file of a version with favourites in it is brought to the present form, and the
    /// favourites to where they belong.
    /// @param file  its path; it is made when there is something to keep
    explicit PresetCache(std::string file);
    /// Waits for the worker.
    ~PresetCache() override;

    /// Takes the presets there are now, and has the worker look into what is new or changed. It is called
    /// after every scan, and waits for a worker that is still at an earlier list.
    /// @param newRoots  the folders they were found in
    void update(const std::vector<PresetInfo*>& presets, const std::vector<std::string>& newRoots);
    /// Waits until the worker has been through.
    void waitForWorker();

    bool isFavorite(const PresetInfo& preset);
    /// Adds or removes a favourite: in the file of its root folder at once. The preset's file is brought up
    /// to what is known of it. Tells observers. What went wrong first is in the result.
    ErrorResult setFavorite(const PresetInfo& preset, bool isOne);

    /// What is known of a file; empty fields if nothing is.
    PresetInfo infoOf(const std::string& presetPath);
    /// The presets in whose name, folder, author, description or tags each word of the text begins a word.
    std::vector<PresetInfo> find(std::string_view text);
    std::size_t size();

    /// 64 bits FNV-1a.
    static std::uint64_t hashOf(std::string_view text) noexcept;

    /// Fired when favourites have changed, once at the end of an update.
    NotifyEvent favoritesChanged;

private:
    using UpdatedObject::update;

    void take(PresetCacheFile& kept);
    void readFavorites();
    void moveFavorites();
    const std::string* rootOf(std::string_view presetPath) const;

    void stopWorker();
    void work(const std::vector<PresetInfo>& list);
    void lookInto(const std::vector<PresetInfo>& list);
    bool isKnown(const PresetInfo& preset, std::uint64_t hash);
    void keep(std::uint64_t hash, PresetInfo preset);
    bool dropUnseen();
    void saveFile();

    const std::string path;
    std::map<std::uint64_t, std::unique_ptr<PresetInfo>> known;  // by the hash of the path
    std::set<std::uint64_t> favorites;
    std::set<std::uint64_t> seen;
    std::set<std::string> roots;
    PresetWordIndex index;
    std::vector<std::string> favoritesToMove;  // of an older file, until their root is known
    bool isChanged = false;                    // since the file was written
    std::atomic<bool> stop{false};
    std::thread worker;
    PendingEvent change{&favoritesChanged};
};
