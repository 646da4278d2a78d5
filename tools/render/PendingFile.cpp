#include "render/PendingFile.h"

#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <unistd.h>

#include <string>
#include <utility>

namespace {

std::filesystem::path folderOf(const std::filesystem::path& file)
{
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace

PendingFile::PendingFile(std::filesystem::path target, Existing existing)
    : finalPath(std::move(target)), whenExisting(existing)
{
    if (std::filesystem::is_directory(finalPath))
        throw RenderError(inQuotes(finalPath.string()) + " is a folder, not a file to write");
    const std::filesystem::path folder = folderOf(finalPath);
    if (!std::filesystem::is_directory(folder))
        throw RenderError("no such folder to write into: " + inQuotes(folder.string()));
    if (access(folder.c_str(), W_OK | X_OK) != 0)
        throw RenderError("no permission to write into " + inQuotes(folder.string()));
    refuseExisting();
    // The process number keeps two renderings of one name apart.
    std::string name(".");
    name.append(finalPath.filename().string()).append(".partial-").append(std::to_string(getpid()));
    temporaryPath = folder / name;
}

PendingFile::~PendingFile()
{
    std::error_code ignored;
    if (!committed)
        std::filesystem::remove(temporaryPath, ignored);
}

void PendingFile::commit()
{
    refuseExisting();
    std::error_code error;
    std::filesystem::rename(temporaryPath, finalPath, error);
    if (error)
        throw RenderError("can't write " + inQuotes(finalPath.string()) + ": " + error.message());
    committed = true;
}

void PendingFile::refuseExisting() const
{
    if (whenExisting == Existing::Refuse && std::filesystem::exists(finalPath))
        throw RenderError(inQuotes(finalPath.string()) + " exists already; --overwrite replaces it");
}
