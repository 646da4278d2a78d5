#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace gui {

/// What a file or folder dialog is to ask for.
struct FileRequest {
    enum class Kind { OpenFile, SaveFile, SelectFolder };
    struct Filter {
        std::string name;
        std::vector<std::string> patterns;  // "*.ext", "*"
    };

    Kind kind = Kind::OpenFile;
    std::string title;
    std::string folder;  // to begin in; empty for the user's home
    std::string name;    // proposed
    std::string defaultExtension;
    std::vector<Filter> filters;  // the first one counts at first; none for all files

    /// Of pairs of a name and its patterns, all parted by "|", patterns by ";".
    static std::vector<Filter> ParseFilters(std::string_view text);
    /// True if the name of a file fits one of the patterns, whatever its case. "*.*" is any name.
    static bool Matches(const Filter& filter, std::string_view name);
    /// Adds the default extension to a path to save at whose name has none.
    std::string WithExtension(std::string path) const;
};

}  // namespace gui
