#include "foundation/FolderLister.h"

#include "foundation/TextCompare.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// Letter case doesn't matter: presets also come from systems on which it doesn't.
bool hasExtension(std::string_view name, std::string_view extension) noexcept
{
    return name.size() > extension.size() &&
           compareNoCase(name.substr(name.size() - extension.size()), extension) == 0;
}

/// Tells of an entry by what it is. @param status  of what stands behind a link
bool tell(std::string_view name, const struct stat& status, std::string_view extension,
          FolderLister::Visitor& visitor)
{
    if (S_ISDIR(status.st_mode))
        return visitor.folder(name);
    if (!S_ISREG(status.st_mode) || !hasExtension(name, extension))
        return true;
    const std::int64_t seconds = status.st_mtime;
    return visitor.file(name, seconds > 0 ? static_cast<std::uint64_t>(seconds) : 0);
}

/// Most files of a folder aren't asked for: the kind that the folder itself knows saves a look at each.
bool listEntry(int folder, const dirent& entry, std::string_view extension, FolderLister::Visitor& visitor)
{
    const std::string_view name = entry.d_name;
    if (name.starts_with('.'))
        return true;  // the folder itself, the one above, and what is hidden
    if (entry.d_type == DT_DIR)
        return visitor.folder(name);
    if (entry.d_type == DT_LNK)
        return visitor.link(name);
    if (entry.d_type != DT_UNKNOWN && !hasExtension(name, extension))
        return true;
    struct stat status {};
    if (fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return true;
    return S_ISLNK(status.st_mode) ? visitor.link(name) : tell(name, status, extension, visitor);
}

}  // namespace

void FolderLister::list(const std::string& path, std::string_view extension, Visitor& visitor) const
{
    const OpenFolder folder(opendir(path.c_str()));
    struct stat status {};
    if (!folder || fstat(dirfd(folder.get()), &status) != 0)
        return;
    if (!visitor.enter({status.st_dev, status.st_ino}))
        return;
    while (const dirent* entry = readdir(folder.get())) {
        if (!listEntry(dirfd(folder.get()), *entry, extension, visitor))
            return;
    }
}

void FolderLister::follow(const std::string& path, std::string_view name, std::string_view extension,
                          Visitor& visitor) const
{
    struct stat status {};
    if (stat(std::string(path).append(name).c_str(), &status) == 0)
        tell(name, status, extension, visitor);
}
