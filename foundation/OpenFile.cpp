#include "foundation/OpenFile.h"

#include "foundation/Paths.h"

std::unique_ptr<std::fstream> openFile(const std::string& path, std::ios_base::openmode mode)
{
    auto stream = std::make_unique<std::fstream>(path, mode);
    // A folder opens for reading, and would fail at the first byte only.
    if (folderExists(path))
        stream->setstate(std::ios_base::failbit);
    return stream;
}
