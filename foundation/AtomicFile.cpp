#include "foundation/AtomicFile.h"

#include "foundation/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace {

constexpr int mostLinks = 40;  // as many as the system follows

/// Where a chain of links ends, which needn't exist. Sets `errno` and is empty if it never ends.
std::string behindLinks(std::string path)
{
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(path, error); ++links) {
        if (links == mostLinks) {
            errno = ELOOP;
            return {};
        }
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        path = (std::filesystem::path(path).parent_path() / target).string();
    }
    return path;
}

/// What may stand in the way of replacing what is there: an errno, or 0. The mode is that of the present
/// file, or the usual one, which the user's mask narrows.
int examine(const std::string& path, mode_t& mode, bool& exists)
{
    struct stat present {};
    exists = stat(path.c_str(), &present) == 0;
    if (!exists)
        return errno == ENOENT ? 0 : errno;
    if (S_ISDIR(present.st_mode))
        return EISDIR;
    if (!S_ISREG(present.st_mode))
        return EINVAL;
    mode = present.st_mode & 07777;
    return access(path.c_str(), W_OK) == 0 ? 0 : errno;
}

/// A new file beside `path`, with its name in `made`; -1 with errno if there is none.
int createAside(const std::string& path, mode_t mode, std::string& made)
{
    for (unsigned number = 0;; ++number) {
        // Process and number keep writers of one name apart, and from what a crash has left.
        made.assign(folderOf(path)).append(".").append(fileName(path)).append(".");
        made.append(std::to_string(getpid())).append("-").append(std::to_string(number)).append(".new");
        const int file = open(made.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t taken = write(file, bytes.data(), bytes.size());
        if (taken > 0)
            bytes.remove_prefix(static_cast<std::size_t>(taken));
        else if (taken == 0 || errno != EINTR)
            return false;
    }
    return true;
}

/// Makes a rename in `folder` outlast a loss of power. Not every file system can.
void syncFolder(const std::string& folder)
{
    const int opened = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    fsync(opened);
    close(opened);
}

/// Puts `bytes` in place of the file. An errno, or 0.
int replaceFile(const std::string& path, std::string_view bytes)
{
    mode_t mode = 0666;
    bool exists = false;
    if (const int obstacle = examine(path, mode, exists))
        return obstacle;
    std::string aside;
    const int file = createAside(path, mode, aside);
    if (file < 0)
        return errno;
    int error = 0;
    if ((exists && fchmod(file, mode) != 0) || !writeAll(file, bytes) || fsync(file) != 0)
        error = errno;
    if (close(file) != 0 && error == 0)
        error = errno;
    if (error == 0 && std::rename(aside.c_str(), path.c_str()) != 0)
        error = errno;
    if (error != 0)
        unlink(aside.c_str());
    else
        syncFolder(std::string(folderOf(path)));
    return error;
}

}  // namespace

bool AtomicFile::commit(ErrorReporter& result)
{
    const std::string target = behindLinks(filePath);
    const int error = !contents        ? EFBIG
                      : target.empty() ? (filePath.empty() ? ENOENT : ELOOP)
                                       : replaceFile(target, contents.view());
    if (error == 0)
        return true;
    std::string text("Can't write \"");
    result.reportError(ErrorReporter::failure,
                       text.append(filePath).append("\": ").append(std::generic_category().message(error)));
    return false;
}
