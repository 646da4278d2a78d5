#pragma once

#include "foundation/FolderLister.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace gui {

/// Reads one folder for a list on the screen, on a thread of its own: a file system that is away may not
/// answer for minutes. What came until now can be had at any time. Thread: main.
///
/// A reading that is given up leaves its thread behind. It owns all it touches, the program stays in memory
/// for it, and it ends as soon as its call returns.
class FolderReading {
public:
    struct Entry {
        std::string name;
        bool isFolder = false;
    };
    enum class State {
        Waiting,  // nothing is known yet
        Linking,  // all is there but what some links lead to
        Done,
        Missing  // there is no such folder, or it can't be read
    };

    /// @param folder  absolute, with the separator at its end
    explicit FolderReading(std::string folder,
                           std::shared_ptr<const FolderLister> lister = std::make_shared<FolderLister>());
    ~FolderReading();
    FolderReading(const FolderReading&) = delete;
    FolderReading& operator=(const FolderReading&) = delete;

    State Now() const;
    /// Waits until it is done or missing, but no longer than `patience`.
    State WaitFor(std::chrono::milliseconds patience) const;
    /// In no order; without what is hidden.
    std::vector<Entry> Entries() const;

private:
    struct Job;
    class Reader;

    std::shared_ptr<Job> job;
};

}  // namespace gui
