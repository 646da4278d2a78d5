#include "presets/FavoritesFile.h"

#include "foundation/AtomicFile.h"
#include "foundation/FileLock.h"
#include "foundation/OpenFile.h"
#include "foundation/Paths.h"

#include <algorithm>

namespace {

constexpr const char* lockName = ".Favorites.lock";
constexpr std::string_view heading =
    "# == Morvelane Preset Favorites File ==\n"
    "# This file contains all favorites in this folder and its subfolders.\n"
    "# Each file must be a valid relative *nix path (for example \"Bass/Test.mvp\").\n"
    "# Note: Paths are case sensitive across all operating systems.\n"
    "# Lines starting with a '#' will be ignored.\n"
    "\n";

/// The path that a line names, empty where it names none.
std::string_view pathIn(std::string_view line)
{
    if (line.ends_with('\r'))
        line.remove_suffix(1);  // of an editor of another system
    return line.starts_with('#') ? std::string_view() : line;
}

std::string withPlatformSeparators(std::string_view path)
{
    std::string text(path);
    std::replace(text.begin(), text.end(), '/', pathSeparator);
    return text;
}

/// What stands in the file for each path below the folder.
std::vector<std::string> relativePaths(const std::vector<std::string>& paths, const std::string& root)
{
    std::vector<std::string> relative;
    for (const std::string& path : paths) {
        // A line break can't be told from the end of a line.
        if (!path.starts_with(root) || path.size() == root.size() || path.find('\n') != std::string::npos)
            continue;
        relative.push_back(path.substr(root.size()));
        std::replace(relative.back().begin(), relative.back().end(), pathSeparator, '/');
    }
    return relative;
}

bool contains(const std::vector<std::string>& list, std::string_view text)
{
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// The lines of the file, without their ends. False if it is there and can't be read.
bool readLines(const std::string& path, std::vector<std::string>& lines)
{
    const auto stream = openFile(path, std::ios_base::in);
    if (!stream->good())
        return !fileExists(path) && !folderExists(path);
    for (std::string line; std::getline(*stream, line);)
        lines.push_back(line);
    return !stream->bad();
}

}  // namespace

FavoritesFile::FavoritesFile(std::string folder) : root(withSeparator(std::move(folder))) {}

std::vector<std::string> FavoritesFile::read() const
{
    std::vector<std::string> lines;
    std::vector<std::string> paths;
    if (root.empty() || !readLines(std::string(root).append(fileName), lines))
        return paths;
    for (const std::string& line : lines) {
        if (!pathIn(line).empty())
            paths.push_back(root + withPlatformSeparators(pathIn(line)));
    }
    return paths;
}

ErrorResult FavoritesFile::change(const std::vector<std::string>& added,
                                  const std::vector<std::string>& removed) const
{
    ErrorResult result;
    const std::string path = std::string(root).append(fileName);
    const FileLock lock(root + lockName);
    std::vector<std::string> lines;
    if (root.empty() || !lock.isHeld() || !readLines(path, lines)) {
        std::string text("Can't change \"");
        result.reportError(ErrorReporter::failure, text.append(path).append("\""));
        return result;
    }
    AtomicFile file(path);
    if (lines.empty())
        file.stream() << heading;
    const std::vector<std::string> dropped = relativePaths(removed, root);
    std::vector<std::string> kept;
    for (const std::string& line : lines) {
        const std::string_view named = pathIn(line);
        if (!named.empty() && contains(dropped, named))
            continue;
        file.stream() << line << '\n';
        kept.emplace_back(named);
    }
    for (const std::string& line : relativePaths(added, root)) {
        if (contains(kept, line))
            continue;
        file.stream() << line << '\n';
        kept.push_back(line);
    }
    file.commit(result);
    return result;
}
