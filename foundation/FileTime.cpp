#include "foundation/FileTime.h"

#include <sys/stat.h>

std::uint64_t fileModificationTime(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || status.st_mtime < 0)
        return 0;
    return static_cast<std::uint64_t>(status.st_mtime);
}
