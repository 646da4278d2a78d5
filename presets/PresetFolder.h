#pragma once

#include "foundation/FolderScan.h"
#include "presets/PresetInfo.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// One folder of presets as it was when it was read, with all folders in it.
///
/// A folder of a name like "_2 Bass" is shown as "Bass", and stands before those without a number, in the
/// order of the numbers. No preset file is opened for it. Thread: main.
class PresetFolder {
public:
    static constexpr int noPriority = 10000;
    static constexpr int usualBudgetMs = 2500;

    /// Reads the folder at once. @param fileExtension  with its ".", as ".mvp"
    /// @param budgetMs  for the folder with all in it; below 1, nothing is read
    PresetFolder(const std::string& folderPath, std::string fileExtension, int budgetMs);
    PresetFolder(const PresetFolder&) = delete;
    PresetFolder& operator=(const PresetFolder&) = delete;
    virtual ~PresetFolder() = default;

    /// Reads the folder of this path in place of what there was. What isn't read in `budgetMs` is left out,
    /// without a failure: the deepest folders are empty then. A folder that doesn't exist is empty. Every
    /// preset there was is gone.
    void scan(const std::string& folderPath, int budgetMs);

    const std::string& path() const noexcept { return folderPath; }  // ends in a separator unless empty
    /// As it is shown.
    const std::string& name() const noexcept { return shownName; }
    void setName(std::string newName) { shownName = std::move(newName); }
    const std::string& extension() const noexcept { return fileExtension; }
    /// Lower ones stand first.
    int sortPriority() const noexcept { return priority; }

    /// In the order in which they are shown.
    const std::vector<std::unique_ptr<PresetFolder>>& subfolders() const noexcept { return folders; }
    const std::vector<std::unique_ptr<PresetInfo>>& presets() const noexcept { return entries; }
    bool isEmpty() const noexcept { return folders.empty() && entries.empty(); }
    /// False if the file system didn't say in time what lies in this folder, the last time it was scanned.
    bool hasAnswered() const noexcept { return answered; }

    /// Appends all presets: for each subfolder its own list, and behind all of them those of this folder.
    void appendPresets(std::vector<PresetInfo*>& list) const;

protected:
    /// One that hasn't been read.
    explicit PresetFolder(std::string fileExtension);

    /// True if the folder is there, and says so in time.
    bool isThere(const std::string& folderPath, int budgetMs);

private:
    PresetFolder(std::string path, std::string fileExtension, const FolderTree& tree);

    void rename(const std::string& folderPath);
    void fill(const FolderTree& tree);

    std::vector<std::unique_ptr<PresetFolder>> folders;
    std::string shownName;
    std::string fileExtension;
    std::vector<std::unique_ptr<PresetInfo>> entries;
    int priority = noPriority;
    std::string folderPath;
    bool answered = false;
    std::unique_ptr<FolderScan> reader;  // of the top of a tree, from the first scan on
};
