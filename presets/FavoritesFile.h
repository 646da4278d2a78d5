#pragma once

#include "foundation/ErrorResult.h"

#include <string>
#include <string_view>
#include <vector>

/// The file "Favorites.txt" of one folder: what the user likes best in it and its subfolders, as paths
/// relative to it, one per line. Lines that are empty or begin with "#" are the user's own.
///
/// Any number of processes may change it at once: each change is made on what the file holds at that moment,
/// and a reader finds a whole file. Thread: any but audio.
class FavoritesFile {
public:
    static constexpr std::string_view fileName = "Favorites.txt";

    /// Touches nothing yet. @param folder  with or without the separator at its end
    explicit FavoritesFile(std::string folder);

    /// Full paths, in the order of the file. Empty if there is no file.
    std::vector<std::string> read() const;

    /// Adds what isn't there yet, and takes away what is. All other lines keep their place. A file that isn't
    /// there begins with a few lines that explain it.
    /// @param added, removed  full paths; those that aren't below the folder are passed over
    ErrorResult change(const std::vector<std::string>& added, const std::vector<std::string>& removed) const;

private:
    std::string root;
};
