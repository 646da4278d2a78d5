#pragma once

#include "foundation/FolderLister.h"
#include "foundation/FolderTree.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

/// Reads a tree of folders in limited time, also where the file system doesn't answer at all.
///
/// A call to a dead network mount may block for minutes or for good, and nothing can end it. So a thread of
/// its own reads, and who waits for it stops waiting when the time is over; what was read until then stands.
/// A thread that blocks is left behind. It owns all it touches, and from then on the program stays in memory
/// even if its host unloads it: the code that the thread will return to has to be there. Such a thread ends
/// as soon as its call returns. Where one still blocks, the next scans don't look, so that they cost no time
/// and leave no further thread.
///
/// Links to folders are followed. A folder within itself is left out. Thread: any but audio, one at a time.
class FolderScan {
public:
    using Milliseconds = std::chrono::milliseconds;

    FolderScan();
    explicit FolderScan(std::shared_ptr<const FolderLister> folderLister);
    FolderScan(const FolderScan&) = delete;
    FolderScan& operator=(const FolderScan&) = delete;
    ~FolderScan();

    /// What lies in a folder: all folders, and the files whose names end in `extension`. When `budget` is
    /// used up, no further folder is opened: those found are there, and empty. What the folder in hand holds
    /// is read nevertheless, for another `overtime` at most. Nobody waits any longer than both together.
    /// @param path  with the separator at its end
    FolderTree read(const std::string& path, const std::string& extension, Milliseconds budget);

    /// True if the folder was there, and said so in time.
    bool exists(const std::string& path, Milliseconds budget);

    static constexpr Milliseconds overtime{250};

private:
    struct Job;
    class Reader;

    FolderTree run(std::shared_ptr<Job> job, Milliseconds budget);
    std::vector<std::string> blockedPaths();

    std::shared_ptr<const FolderLister> lister;
    std::vector<std::shared_ptr<Job>> leftBehind;
};
