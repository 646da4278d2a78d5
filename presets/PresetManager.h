#pragma once

#include "presets/PresetFolder.h"

class PresetCache;

/// The top of a tree of presets. It numbers them for MIDI, finds them by their names, and steps through them.
///
/// Further trees may stand behind its own. Every scan makes all entries anew: nobody keeps a pointer to one
/// over it. Thread: main; what several instances share is made and changed with the process lock held.
class PresetManager : public PresetFolder {
public:
    enum class Scope { Everything, RootTree };
    enum class Direction { Previous, Same, Next };

    static constexpr int programsPerBank = 128;

    /// Without a path it is empty. @param presetExtension  with its "."
    explicit PresetManager(std::string presetExtension);

    /// Reads the root tree anew from this path, and numbers all presets.
    void rescan(const std::string& newPath);
    /// Reads everything anew.
    void rescanAll();
    /// Makes `wanted` the root, or `fallback` if `wanted` isn't a folder. Where the root is there already,
    /// nothing is read.
    void chooseRoot(const std::string& wanted, const std::string& fallback);

    /// Reads a tree that stands behind all others from now on. @param name  as it is shown
    void addExtraFolder(const std::string& newPath, std::string name);
    const std::vector<std::unique_ptr<PresetFolder>>& extraFolders() const noexcept { return extras; }

    /// All presets: those of the root tree first, then each further tree. Also counts the root tree's.
    void listPresets(std::vector<PresetInfo*>& list);
    /// Those of the root tree, by the last `listPresets`.
    std::uint32_t mainPresetCount() const noexcept { return rootCount; }

    /// The first of exactly this name, or null.
    PresetInfo* findByName(std::string_view presetName, Scope scope);
    /// The preset before or behind the one of this path; null if there is none of this path. What lies in the
    /// root tree has its neighbours there, the last one beside the first.
    PresetInfo* neighbour(std::string_view presetPath, Direction direction);

    /// May be null. Not owned; it hears of all presets after every scan.
    void setCache(PresetCache* presetCache) { cache = presetCache; }

private:
    void scanRoot(const std::string& newPath);
    void number();
    void tellCache();

    std::vector<std::unique_ptr<PresetFolder>> extras;
    std::uint32_t rootCount = 0;
    PresetCache* cache = nullptr;
};
