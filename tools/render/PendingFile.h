#pragma once

#include <filesystem>

/// A file that appears under its name only when it is complete.
///
/// It is written under a temporary name in the same folder; commit() renames it, and without commit()
/// destruction removes it.
class PendingFile {
public:
    enum class Existing { Refuse, Replace };

    /// Creates nothing yet. Throws RenderError if `target` can't become a file: its folder is missing or
    /// closed for writing, it is a folder itself, or it exists and is to be refused.
    PendingFile(std::filesystem::path target, Existing existing);
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    const std::filesystem::path& target() const noexcept { return finalPath; }
    /// Write here.
    const std::filesystem::path& path() const noexcept { return temporaryPath; }
    /// Throws RenderError if the target appeared meanwhile and is to be refused, or if renaming fails.
    void commit();

private:
    void refuseExisting() const;

    std::filesystem::path finalPath;
    std::filesystem::path temporaryPath;
    Existing whenExisting;
    bool committed = false;
};
